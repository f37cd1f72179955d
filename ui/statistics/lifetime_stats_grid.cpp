// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/statistics/lifetime_stats_grid.h"

#include "model/stats_store.h"
#include "ui/controls/byte_text.h"
#include "ui/controls/styled_label.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QGridLayout>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int columns = 3;
constexpr int columnWidth = 120;

QFont titleFont()
{
    return fonts::font(fonts::TextStyle::caption2, QFont::Bold);
}

QFont valueFont()
{
    return fonts::systemFont(14, QFont::DemiBold);
}

} // namespace

LightMetric::LightMetric(const QString& title, QWidget* parent)
    : QWidget(parent), m_value(new FiguresLabel(QString(), valueFont, TidewellTheme::ink()))
{
    auto* stack = new QVBoxLayout(this);
    stack->setContentsMargins(0, 0, 0, 0);
    stack->setSpacing(2);
    auto* label = new StyledLabel(title, titleFont, TidewellTheme::copperStrong());
    label->setUpperCase();
    stack->addWidget(label);
    stack->addWidget(m_value);
    m_value->setAccessibleDescription(title);
}

void LightMetric::setValue(const QString& value)
{
    m_value->setText(value);
}

LifetimeStatsGrid::LifetimeStatsGrid(const StatsStore& store, QWidget* parent)
    : QWidget(parent), m_store(store)
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(10);
    const char* const titles[] = {"Files",         "Gross Saved", "Net Saved",
                                  "Original Data", "Output Data", "Largest Save"};
    for (int cell = 0; cell < static_cast<int>(m_metrics.size()); ++cell) {
        auto* metric = new LightMetric(QString::fromLatin1(titles[cell]));
        m_metrics[static_cast<std::size_t>(cell)] = metric;
        grid->addWidget(metric, cell / columns, cell % columns);
    }
    for (int column = 0; column < columns; ++column) {
        grid->setColumnMinimumWidth(column, columnWidth);
        grid->setColumnStretch(column, 1);
    }
    connect(&store, &StatsStore::statsChanged, this, &LifetimeStatsGrid::refresh);
    refresh();
}

void LifetimeStatsGrid::refresh()
{
    const LifetimeStats& stats = m_store.stats();
    const QString values[] = {
        QStringLiteral("%1/%2").arg(stats.filesSucceeded).arg(stats.filesProcessed),
        byteText(stats.grossBytesSaved),
        byteText(stats.netBytesSaved),
        byteText(stats.originalBytes),
        byteText(stats.outputBytes),
        byteText(stats.largestSingleSaveBytes),
    };
    for (std::size_t cell = 0; cell < m_metrics.size(); ++cell)
        m_metrics[cell]->setValue(values[cell]);
}

} // namespace lumora
