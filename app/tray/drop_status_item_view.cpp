// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/drop_status_item_view.h"

#include "app/desktop/desktop_files.h"
#include "app/desktop/x11.h"
#include "app/termination.h"
#include "ui/controls/links.h"
#include "ui/intake/file_intake.h"
#include "ui/intake/offered_files.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QDragEnterEvent>
#include <QMenu>
#include <QPainter>

#include <algorithm>

namespace lumora {
namespace {

constexpr QSize itemSize(30, 22);
constexpr int highlightInset = 2;

} // namespace

std::unique_ptr<QMenu> makeStatusMenu(const StatusItemActions& actions)
{
    auto menu = std::make_unique<QMenu>();
    menu->addAction(QStringLiteral("Open Drop Window"), actions.openWindow);
    menu->addAction(QStringLiteral("Preferences..."), actions.openPreferences);
    menu->addAction(QStringLiteral("Tidewell Website"), [] { openLink(links::website()); });
    menu->addSeparator();
    QAction* quit = menu->addAction(QStringLiteral("Quit Lumora"), [] { Termination::shared().begin(); });
    quit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    quit->setShortcutVisibleInContextMenu(true);
    return menu;
}

// No text stands beside it, so it does not grow with the texts.
Symbol statusSymbol(int side)
{
    return {QStringLiteral("photo.on.rectangle.angled"), side * 0.8 / fonts::textScale()};
}

DropStatusItemView::DropStatusItemView(StatusItemActions actions, FileIntake& intake)
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint),
      m_actions(std::move(actions)), m_intake(intake), m_symbolColor(TidewellTheme::cream())
{
    setAttribute(Qt::WA_TranslucentBackground);
    setAcceptDrops(true);
    setMinimumSize(itemSize);
    setWindowTitle(QStringLiteral("Lumora"));
    setAccessibleName(QStringLiteral("Lumora"));
    setToolTip(QStringLiteral("Lumora"));
}

void DropStatusItemView::setSymbolColor(const QColor& color)
{
    m_symbolColor = color;
    update();
}

QSize DropStatusItemView::sizeHint() const
{
    return itemSize;
}

void DropStatusItemView::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_isHighlighted) {
        const QRect inner = rect().adjusted(highlightInset, highlightInset, -highlightInset, -highlightInset);
        painter.fillRect(inner, QColor::fromRgbF(0.788F, 0.576F, 0.451F, 0.32F));
    }
    // A tray gives what height it has, in pixels of the screen: at scale 2 often half the wanted one.
    const int side = std::min({statusSymbolSide, width() - 2, height() - 2});
    statusSymbol(side).paint(painter, rect(), m_symbolColor);
}

void DropStatusItemView::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton || event->button() == Qt::RightButton) showMenu();
}

void DropStatusItemView::showMenu()
{
    QMenu* menu = makeStatusMenu(m_actions).release();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    // The menu must not outlive the actions that it calls.
    connect(this, &QObject::destroyed, menu, &QObject::deleteLater);
    menu->popup(positionOnScreen() + QPoint(0, height()));
}

QPoint DropStatusItemView::positionOnScreen() const
{
    // Inside a tray Qt does not know where its window lies.
    if (xcb_connection_t* connection = x11::connection())
        return x11::positionOnRoot(connection, static_cast<xcb_window_t>(winId())) / devicePixelRatioF();
    return mapToGlobal(QPoint());
}

void DropStatusItemView::setHighlighted(bool highlighted)
{
    m_isHighlighted = highlighted;
    update();
}

void DropStatusItemView::dragEnterEvent(QDragEnterEvent* event)
{
    if (!offersImages(*event->mimeData())) return event->ignore();
    setHighlighted(true);
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void DropStatusItemView::dragMoveEvent(QDragMoveEvent* event)
{
    event->setDropAction(m_isHighlighted ? Qt::CopyAction : Qt::IgnoreAction);
    event->setAccepted(m_isHighlighted);
}

void DropStatusItemView::dragLeaveEvent(QDragLeaveEvent*)
{
    setHighlighted(false);
}

void DropStatusItemView::dropEvent(QDropEvent* event)
{
    setHighlighted(false);
    if (!offersImages(*event->mimeData())) return event->ignore();
    event->setDropAction(Qt::CopyAction);
    event->accept();
    m_intake.load(*event->mimeData(), [process = m_actions.process](const FileIntake::Paths& files) {
        if (!files.empty()) process(files);
    });
}

} // namespace lumora
