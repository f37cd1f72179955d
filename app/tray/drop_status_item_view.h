// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The status item: a small monochrome picture icon that takes files and folders dropped on it and opens a
// menu on a click. Whoever makes it places it (in a tray). Main thread.
#pragma once

#include "ui/theme/symbols.h"

#include <QColor>
#include <QWidget>

#include <filesystem>
#include <functional>
#include <memory>
#include <vector>

class QMenu;

namespace lumora {

class FileIntake;

struct StatusItemActions
{
    std::function<void()> openWindow;
    std::function<void()> openPreferences;
    std::function<void(const std::vector<std::filesystem::path>&)> process;
};

// "Open Drop Window", "Preferences...", "Tidewell Website", a separator, "Quit Lumora".
std::unique_ptr<QMenu> makeStatusMenu(const StatusItemActions& actions);

// The icon of a status item of any kind, in a square of this side.
inline constexpr int statusSymbolSide = 18;
Symbol statusSymbol(int side = statusSymbolSide);

class DropStatusItemView : public QWidget
{
    Q_OBJECT

public:
    // `intake` leads what is dropped to `process`, also once this view is gone; it outlives it.
    DropStatusItemView(StatusItemActions actions, FileIntake& intake);

    bool isHighlighted() const { return m_isHighlighted; }
    // Of the icon, so that it stands out on the ground it lies on.
    void setSymbolColor(const QColor& color);
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void showMenu();
    void setHighlighted(bool highlighted);
    QPoint positionOnScreen() const;

    const StatusItemActions m_actions;
    FileIntake& m_intake;
    QColor m_symbolColor;
    bool m_isHighlighted = false;
};

} // namespace lumora
