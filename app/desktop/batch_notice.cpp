// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/batch_notice.h"

#include "model/batch_pace.h"
#include "model/processing_model.h"

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
                         Now now, QObject* parent)
    : QObject(parent), m_model(model), m_isWatched(std::move(isWatched)), m_notify(std::move(notify)),
      m_now(std::move(now))
{
    connect(&model, &ProcessingModel::resultInserted, this, [this] {
        if (!isOfUndo(m_model.resultAt(0))) m_totals.add(m_model.resultAt(0));
    });
    connect(&model, &ProcessingModel::isProcessingChanged, this, &BatchNotice::processingChanged);
    // Queued: a batch that follows at once has started by then, and its results join the same message.
    connect(&model, &ProcessingModel::isProcessingChanged, this, &BatchNotice::update, Qt::QueuedConnection);
}

void BatchNotice::expect()
{
    if (m_isExpected) return;
    m_isExpected = true;
    m_totals = {};
}

void BatchNotice::processingChanged()
{
    if (!m_model.isProcessing() || m_started) return;
    m_started = m_now();
    if (!m_isExpected) m_totals = {};
}

bool BatchNotice::tookLong() const
{
    return m_started && m_now() - *m_started > BatchPace::longBatch;
}

void BatchNotice::update()
{
    if (m_model.isProcessing()) return;
    const bool isDue = m_isExpected || tookLong();
    m_started.reset();
    if (!isDue) return;
    m_isExpected = false;
    if (!m_isWatched()) announce();
}

void BatchNotice::announce()
{
    const BatchOutcome& outcome = m_model.outcome();
    if (outcome.isOfUndo()) return m_notify(QStringLiteral("Undo is done"), outcome.text());
    if (m_totals.files > 0) m_notify(summaryText(m_totals), bodyText(m_totals));
}

} // namespace lumora
