// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One line of lifetime totals for the drop window. Follows the store.
#pragma once

#include <QWidget>

class QLabel;

namespace lumora {

class StatsStore;

class LifetimeStatsStrip : public QWidget
{
    Q_OBJECT

public:
    explicit LifetimeStatsStrip(const StatsStore& store, QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void refresh();

    const StatsStore& m_store;
    QLabel* m_files;
    QLabel* m_net;
    QLabel* m_best;
};

} // namespace lumora
