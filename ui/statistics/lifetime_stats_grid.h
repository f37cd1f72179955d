// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The six lifetime totals on a light card. Follows the store.
#pragma once

#include <QWidget>

#include <array>

namespace lumora {

class FiguresLabel;
class StatsStore;

// A title above its figure.
class LightMetric : public QWidget
{
    Q_OBJECT

public:
    explicit LightMetric(const QString& title, QWidget* parent = nullptr);

    void setValue(const QString& value);

private:
    FiguresLabel* m_value;
};

class LifetimeStatsGrid : public QWidget
{
    Q_OBJECT

public:
    explicit LifetimeStatsGrid(const StatsStore& store, QWidget* parent = nullptr);

private:
    void refresh();

    const StatsStore& m_store;
    std::array<LightMetric*, 6> m_metrics;
};

} // namespace lumora
