// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/window_edges.h"

#include "ui/theme/tidewell_theme.h"

#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWindow>

namespace lumora {
namespace {

constexpr int gripWidth = 5;
constexpr int gripCorner = 12;
constexpr int cornerRadius = 12;

constexpr std::array<Qt::Edges, 8> gripEdges{Qt::TopEdge,
                                             Qt::BottomEdge,
                                             Qt::LeftEdge,
                                             Qt::RightEdge, // below the corners
                                             Qt::TopEdge | Qt::LeftEdge,
                                             Qt::TopEdge | Qt::RightEdge,
                                             Qt::BottomEdge | Qt::LeftEdge,
                                             Qt::BottomEdge | Qt::RightEdge};
constexpr std::array<Qt::Corner, 4> corners{Qt::TopLeftCorner, Qt::TopRightCorner, Qt::BottomLeftCorner,
                                            Qt::BottomRightCorner};

Qt::CursorShape cursorOf(Qt::Edges edges)
{
    if (edges == Qt::TopEdge || edges == Qt::BottomEdge) return Qt::SizeVerCursor;
    if (edges == Qt::LeftEdge || edges == Qt::RightEdge) return Qt::SizeHorCursor;
    const bool falling = edges == (Qt::TopEdge | Qt::LeftEdge) || edges == (Qt::BottomEdge | Qt::RightEdge);
    return falling ? Qt::SizeFDiagCursor : Qt::SizeBDiagCursor;
}

QRect gripArea(Qt::Edges edges, const QSize& window)
{
    const bool isCorner = edges & (Qt::LeftEdge | Qt::RightEdge) && edges & (Qt::TopEdge | Qt::BottomEdge);
    QRect area(QPoint(), window);
    const int depth = isCorner ? gripCorner : gripWidth;
    if (edges & Qt::TopEdge) area.setBottom(area.top() + depth - 1);
    if (edges & Qt::BottomEdge) area.setTop(area.bottom() - depth + 1);
    if (edges & Qt::LeftEdge) area.setRight(area.left() + depth - 1);
    if (edges & Qt::RightEdge) area.setLeft(area.right() - depth + 1);
    return area;
}

class Grip : public QWidget
{
public:
    Grip(Qt::Edges edges, QWidget& window) : QWidget(&window), m_edges(edges) { setCursor(cursorOf(edges)); }

protected:
    void mousePressEvent(QMouseEvent* event) override
    {
        if (event->button() == Qt::LeftButton) window()->windowHandle()->startSystemResize(m_edges);
    }

private:
    const Qt::Edges m_edges;
};

// Takes away what the content painted outside the round corner.
class Corner : public QWidget
{
public:
    Corner(Qt::Corner corner, QWidget& window) : QWidget(&window), m_corner(corner)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(cornerRadius, cornerRadius);
    }

    void place(const QSize& window)
    {
        const bool right = m_corner == Qt::TopRightCorner || m_corner == Qt::BottomRightCorner;
        const bool bottom = m_corner == Qt::BottomLeftCorner || m_corner == Qt::BottomRightCorner;
        move(right ? window.width() - width() : 0, bottom ? window.height() - height() : 0);
        m_center = QPointF(right ? 0 : cornerRadius, bottom ? 0 : cornerRadius);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainterPath square, circle;
        square.addRect(rect());
        circle.addEllipse(m_center, cornerRadius, cornerRadius);
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
        painter.fillPath(square.subtracted(circle), Qt::black);
    }

private:
    const Qt::Corner m_corner;
    QPointF m_center;
};

class Hairline : public QWidget
{
public:
    explicit Hairline(QWidget& window) : QWidget(&window)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        setFocusPolicy(Qt::NoFocus);
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        painter.setPen(TidewellTheme::withOpacity(TidewellTheme::cream(), 0.2));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
};

} // namespace

WindowEdges::WindowEdges(QWidget& window) : m_window(window), m_hairline(new Hairline(window))
{
    for (std::size_t i = 0; i < corners.size(); ++i)
        m_corners[i] = new Corner(corners[i], window);
    for (std::size_t i = 0; i < gripEdges.size(); ++i)
        m_grips[i] = new Grip(gripEdges[i], window);
}

void WindowEdges::update(bool resizable, bool rounded)
{
    m_hairline->setGeometry(m_window.rect());
    m_hairline->setVisible(resizable && !rounded);
    m_hairline->raise();
    for (QWidget* corner : m_corners) {
        static_cast<Corner*>(corner)->place(m_window.size());
        corner->setVisible(rounded);
        corner->raise();
    }
    for (std::size_t i = 0; i < m_grips.size(); ++i) {
        m_grips[i]->setGeometry(gripArea(gripEdges[i], m_window.size()));
        m_grips[i]->setVisible(resizable);
        m_grips[i]->raise();
    }
}

} // namespace lumora
