// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/branded_window.h"

#include "app/window/compositor.h"

#include <QApplication>
#include <QBoxLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QShortcut>
#include <QWindow>

namespace lumora {
namespace {

constexpr int chromeMargin = 8;
constexpr int chromeHeight = 42;

QRect freeArea()
{
    return QGuiApplication::primaryScreen()->availableGeometry();
}

} // namespace

BrandedWindow::BrandedWindow(const WindowParameters& parameters, QWidget* content, QMenu& menu)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint),
      m_menuButton(WindowControl::Glyph::menu, QStringLiteral("Menu"), this),
      m_minimizeButton(WindowControl::Glyph::minimize, QStringLiteral("Minimize"), this),
      m_zoomButton(WindowControl::Glyph::zoom, QStringLiteral("Zoom"), this),
      m_closeButton(WindowControl::Glyph::close, QStringLiteral("Close"), this), m_edges(*this)
{
    setAttribute(Qt::WA_TranslucentBackground);
    setWindowTitle(parameters.title);
    setObjectName(parameters.identifier);
    setWindowRole(parameters.identifier);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    // The window's own minimum counts: a small screen must be able to hold it.
    layout->setSizeConstraint(QLayout::SetNoConstraint);
    content->setMinimumSize(content->minimumSize().boundedTo(freeArea().size()));
    layout->addWidget(content);
    setMinimumSize(parameters.minimumSize.boundedTo(freeArea().size()));
    resize(parameters.size.boundedTo(freeArea().size()));
    move(freeArea().center() - rect().center());

    // No control: nothing looks chosen until the user moves the focus, from the content's first control on.
    setFocusPolicy(Qt::ClickFocus);
    (content->focusPolicy() == Qt::NoFocus ? this : content)->setFocus();
    addActions(menu.actions());
    const auto onKeys = [this](const QKeySequence& keys, auto&& action) {
        connect(new QShortcut(keys, this), &QShortcut::activated, this, action);
    };
    onKeys(Qt::CTRL | Qt::Key_W, [this] { close(); });
    onKeys(Qt::Key_F10, [this] { m_menuButton.click(); });
    connect(&m_menuButton, &QAbstractButton::clicked, this, [this, &menu] { openMenu(menu); });
    connect(&m_minimizeButton, &QAbstractButton::clicked, this, &QWidget::showMinimized);
    connect(&m_zoomButton, &QAbstractButton::clicked, this, &BrandedWindow::toggleZoom);
    connect(&m_closeButton, &QAbstractButton::clicked, this, &QWidget::close);
}

void BrandedWindow::bringToFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void BrandedWindow::toggleZoom()
{
    setWindowState(windowState() ^ Qt::WindowMaximized);
}

void BrandedWindow::openMenu(QMenu& menu)
{
    menu.popup(m_menuButton.mapToGlobal(QPoint(0, m_menuButton.height())));
}

void BrandedWindow::placeChrome()
{
    const int top = (chromeHeight - m_closeButton.height()) / 2;
    m_menuButton.move(chromeMargin, top);
    int right = width() - chromeMargin;
    for (WindowControl* control : {&m_closeButton, &m_zoomButton, &m_minimizeButton}) {
        right -= control->width();
        control->move(right, top);
    }
    for (WindowControl* control : {&m_menuButton, &m_minimizeButton, &m_zoomButton, &m_closeButton})
        control->raise();
    const bool free = !(windowState() & (Qt::WindowMaximized | Qt::WindowFullScreen));
    m_edges.update(free, free && m_roundsCorners);
}

void BrandedWindow::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    placeChrome();
}

void BrandedWindow::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    m_roundsCorners = compositorRuns();
    placeChrome();
}

void BrandedWindow::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::ActivationChange) m_roundsCorners = compositorRuns();
    if (event->type() == QEvent::ActivationChange || event->type() == QEvent::WindowStateChange)
        placeChrome();
}

void BrandedWindow::closeEvent(QCloseEvent* event)
{
    if (m_mayClose && !m_mayClose()) return event->ignore();
    QWidget::closeEvent(event);
    Q_EMIT closed();
}

// What no control of the content took is the background.
void BrandedWindow::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton) m_pressedAt = event->position().toPoint();
}

void BrandedWindow::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_pressedAt) return;
    const QPoint way = event->position().toPoint() - *m_pressedAt;
    if (way.manhattanLength() < QApplication::startDragDistance()) return;
    m_pressedAt.reset();
    windowHandle()->startSystemMove();
}

void BrandedWindow::mouseReleaseEvent(QMouseEvent*)
{
    m_pressedAt.reset();
}

void BrandedWindow::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && event->position().y() < chromeHeight) toggleZoom();
}

} // namespace lumora
