// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What was saved in each of the last weeks, as bars. The pointer over a bar is told its figure, and a screen
// reader all of them.
#pragma once

#include "ui/history/weekly_savings.h"

#include <QWidget>

#include <optional>
#include <vector>

namespace lumora {

class WeeksChart : public QWidget
{
    Q_OBJECT

public:
    explicit WeeksChart(QWidget* parent = nullptr);

    void display(std::vector<WeekSaving> weeks);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {120, sizeHint().height()}; }

protected:
    bool event(QEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QRectF barsArea() const;
    // A week's share of it, from the leading edge.
    QRectF column(std::size_t week) const;
    std::optional<std::size_t> weekAt(const QPoint& point) const;
    void setPointed(std::optional<std::size_t> week);
    void paintHead(QPainter& painter);
    void paintBars(QPainter& painter);
    void paintMonths(QPainter& painter);

    std::vector<WeekSaving> m_weeks;
    std::optional<std::size_t> m_pointed; // by the pointer
};

} // namespace lumora
