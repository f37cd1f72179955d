// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/batch_notice.h"

#include "model/processing_model.h"
#include "model/result_text.h"

#include <QLocale>

namespace lumora {
namespace {

QString summaryText(const ResultTotals& totals)
{
    const QString noun = totals.succeeded == 1 ? QStringLiteral("image") : QStringLiteral("images");
    return QStringLiteral("Optimized %1 %2").arg(totals.succeeded).arg(noun);
}

QString bodyText(const ResultTotals& totals)
{
    const QLocale locale;
    QString text = QStringLiteral("%1: %2").arg(totals.differenceTitle(), totals.differenceText(locale));
    const auto failed = totals.files - totals.succeeded;
    if (failed > 0) text += QStringLiteral("\n%1 failed").arg(failed);
    return text;
}

} // namespace

BatchNotice::BatchNotice(const ProcessingModel& model, std::function<bool()> isWatched, Notify notify,
                         QObject* parent)
    : QObject(parent), m_model(model), m_isWatched(std::move(isWatched)), m_notify(std::move(notify))
{
    // Queued: a batch that follows at once has started by then, and its results join the same message.
    connect(&model, &ProcessingModel::isProcessingChanged, this, &BatchNotice::update, Qt::QueuedConnection);
}

void BatchNotice::expect()
{
    if (m_isExpected) return;
    m_isExpected = true;
    m_countBefore = m_model.resultCount();
}

void BatchNotice::update()
{
    if (!m_isExpected || m_model.isProcessing()) return;
    m_isExpected = false;
    if (!m_isWatched()) announce();
}

void BatchNotice::announce()
{
    ResultTotals totals;
    for (int row = 0; row < m_model.resultCount() - m_countBefore; ++row)
        totals.add(m_model.resultAt(row));
    if (totals.files > 0) m_notify(summaryText(totals), bodyText(totals));
}

} // namespace lumora
