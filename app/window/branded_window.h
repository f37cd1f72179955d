// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A window with our own dark chrome: its content reaches to the very top, the controls lie in the content's
// upper padding, the background moves it and the edges resize it. The title is for the task bar. Closing
// hides it. Main thread.
#pragma once

#include "app/window/window_control.h"
#include "app/window/window_edges.h"

#include <QPoint>
#include <QSize>
#include <QString>
#include <QWidget>

#include <functional>
#include <optional>

class QMenu;

namespace lumora {

struct WindowParameters
{
    QString title;
    QString identifier;
    QSize size; // of the content, which is the whole window
    QSize minimumSize;
};

class BrandedWindow : public QWidget
{
    Q_OBJECT

public:
    // Takes the content; `menu` is the application's and outlives the window. Sizes that the screen has no
    // room for are cut to its free area; the window is centred there.
    BrandedWindow(const WindowParameters& parameters, QWidget* content, QMenu& menu);

    // Shows it in front with the keyboard's focus, also when it was hidden or minimised.
    void bringToFront();

    // Asked before the user closes it; false keeps it open.
    void setMayClose(std::function<bool()> mayClose) { m_mayClose = std::move(mayClose); }

Q_SIGNALS:
    // The user closed it; it is hidden.
    void closed();

protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    void placeChrome();
    void toggleZoom();
    void openMenu(QMenu& menu);

    WindowControl m_menuButton;
    WindowControl m_minimizeButton;
    WindowControl m_zoomButton;
    WindowControl m_closeButton;
    WindowEdges m_edges;
    std::function<bool()> m_mayClose;
    bool m_roundsCorners = false;
    std::optional<QPoint> m_pressedAt; // on the background, in the window
};

} // namespace lumora
