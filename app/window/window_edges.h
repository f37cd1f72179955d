// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a frame would give a window without one: edges that resize it and corners that are rounded. Lies over
// the window's content. Main thread.
#pragma once

#include <QWidget>

#include <array>

namespace lumora {

class WindowEdges
{
public:
    explicit WindowEdges(QWidget& window);

    // Lays the edges around the window as it is now; `resizable` and `rounded` as its state allows. Where it
    // cannot be rounded, nothing throws a shadow either: a hairline then parts it from what lies behind.
    void update(bool resizable, bool rounded);

private:
    QWidget& m_window;
    std::array<QWidget*, 8> m_grips{};
    std::array<QWidget*, 4> m_corners{};
    QWidget* m_hairline;
};

} // namespace lumora
