// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/results/results_summary.h"

#include "model/processing_model.h"
#include "ui/controls/styled_label.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace lumora {
namespace {

QColor cream(double opacity)
{
    return TidewellTheme::withOpacity(TidewellTheme::cream(), opacity);
}

QFont titleFont()
{
    return fonts::font(fonts::TextStyle::caption2, QFont::Bold);
}

QFont valueFont()
{
    return fonts::systemFont(13, QFont::DemiBold);
}

class Divider : public QWidget
{
public:
    Divider() { setFixedWidth(1); }

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), cream(0.2)); }
};

} // namespace

SummaryMetric::SummaryMetric(QWidget* parent) : QWidget(parent)
{
    auto* title = new StyledLabel(QString(), titleFont, TidewellTheme::copperBright());
    title->setUpperCase();
    m_title = title;
    m_value = new FiguresLabel(QString(), valueFont, TidewellTheme::cream());
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(2);
    stack->addWidget(m_title);
    stack->addWidget(m_value);
}

void SummaryMetric::display(const QString& title, const QString& value)
{
    m_title->setText(title);
    m_value->setText(value);
    m_value->updateGeometry();
    setAccessibleName(title + u' ' + value);
}

QString SummaryMetric::title() const
{
    return m_title->text();
}

QString SummaryMetric::value() const
{
    return m_value->text();
}

ResultsSummary::ResultsSummary(const ProcessingModel& processing, QWidget* parent)
    : QWidget(parent), m_processing(processing), m_files(new SummaryMetric), m_difference(new SummaryMetric),
      m_reduction(new SummaryMetric)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 9, 12, 9);
    row->setSpacing(14);
    row->addWidget(m_files);
    row->addWidget(new Divider);
    row->addWidget(m_difference);
    row->addWidget(new Divider);
    row->addWidget(m_reduction);
    row->addStretch();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Batch totals"));
    connect(&processing, &ProcessingModel::resultInserted, this, &ResultsSummary::addNewest);
    connect(&processing, &ProcessingModel::resultsRemoved, this, &ResultsSummary::addAll);
    // An undo changes one row after the other.
    m_changes.setSingleShot(true);
    connect(&processing, &ProcessingModel::resultChanged, &m_changes, qOverload<>(&QTimer::start));
    connect(&m_changes, &QTimer::timeout, this, &ResultsSummary::addAll);
    addAll();
}

void ResultsSummary::addTrailing(QWidget* controls)
{
    layout()->addWidget(controls);
}

void ResultsSummary::addAll()
{
    m_totals = {};
    for (int i = 0; i < m_processing.resultCount(); ++i)
        m_totals.add(m_processing.resultAt(i));
    refresh();
}

void ResultsSummary::addNewest()
{
    m_totals.add(m_processing.resultAt(0));
    refresh();
}

void ResultsSummary::refresh()
{
    const QLocale locale;
    m_files->display(QStringLiteral("Files"), m_totals.filesText());
    m_difference->display(m_totals.differenceTitle(), m_totals.differenceText(locale));
    m_reduction->display(QStringLiteral("Reduction"), m_totals.percentageText(locale));
}

void ResultsSummary::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintRounded(painter, rect(), 8, TidewellTheme::withOpacity(TidewellTheme::leatherRaised(), 0.78),
                 cream(0.14));
}

} // namespace lumora
