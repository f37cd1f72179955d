// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/statistics/lifetime_stats_strip.h"

#include "model/stats_store.h"
#include "ui/controls/byte_text.h"
#include "ui/controls/styled_label.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QHBoxLayout>
#include <QPainter>

namespace lumora {
namespace {

QFont stripFont()
{
    return fonts::font(fonts::TextStyle::caption, QFont::DemiBold);
}

QLabel* stripLabel()
{
    return new StyledLabel(QString(), stripFont, TidewellTheme::creamMuted());
}

} // namespace

LifetimeStatsStrip::LifetimeStatsStrip(const StatsStore& store, QWidget* parent)
    : QWidget(parent), m_store(store), m_files(stripLabel()), m_net(stripLabel()), m_best(stripLabel())
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(12, 8, 12, 8);
    row->setSpacing(10);
    row->addWidget(new SymbolLabel({QStringLiteral("chart.line.uptrend.xyaxis"), 10, QFont::DemiBold},
                                   TidewellTheme::copperBright()));
    for (QLabel* label : {m_files, m_net, m_best})
        row->addWidget(label);
    row->addStretch();
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleName(QStringLiteral("Lifetime statistics"));
    connect(&store, &StatsStore::statsChanged, this, &LifetimeStatsStrip::refresh);
    refresh();
}

void LifetimeStatsStrip::refresh()
{
    const LifetimeStats& stats = m_store.stats();
    m_files->setText(QStringLiteral("%1 lifetime files").arg(stats.filesSucceeded));
    m_net->setText(QStringLiteral("Net saved %1").arg(byteText(stats.netBytesSaved)));
    m_best->setText(QStringLiteral("Best %1").arg(byteText(stats.largestSingleSaveBytes)));
    m_best->setVisible(stats.largestSingleSaveBytes > 0);
}

void LifetimeStatsStrip::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    paintCapsule(painter, rect(), TidewellTheme::withOpacity(TidewellTheme::cream(), 0.08),
                 TidewellTheme::withOpacity(TidewellTheme::cream(), 0.12));
}

} // namespace lumora
