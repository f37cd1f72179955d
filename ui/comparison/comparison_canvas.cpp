// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/comparison_canvas.h"

#include "ui/comparison/canvas_overlays.h"
#include "ui/comparison/difference.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QGestureEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace lumora {
namespace {

using namespace std::chrono_literals;

constexpr double cornerRadius = 8;
constexpr double zoomStep = 1.25;
// A wheel or a finger asks for many zooms on its way; parts of pictures are made for some of them.
constexpr auto askingPause = 40ms;

QString nameOf(ComparisonCanvas::Side side)
{
    return side == ComparisonCanvas::original ? QStringLiteral("Original") : QStringLiteral("Output");
}

} // namespace

ComparisonCanvas::ComparisonCanvas(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    grabGesture(Qt::PinchGesture);
    m_asking.setSingleShot(true);
    m_asking.setInterval(askingPause);
    connect(&m_asking, &QTimer::timeout, this, &ComparisonCanvas::ask);
}

void ComparisonCanvas::clear()
{
    m_pictures = {};
    m_asked = {};
    m_geometry.setFrame({});
    m_notice.clear();
    m_progress.reset();
    redraw();
    Q_EMIT changed();
}

void ComparisonCanvas::setSizes(QSize originalSize, QSize outputSize)
{
    m_pictures[original].setSize(originalSize);
    m_pictures[output].setSize(outputSize);
    // Both are laid over the larger one: an output never has more pixels, unless a small original is missing.
    m_geometry.setFrame(originalSize.isEmpty() ? outputSize : originalSize);
    redraw();
    ask();
    Q_EMIT changed();
}

void ComparisonCanvas::take(Side side, const PicturePart& part, const QImage& pixels)
{
    m_pictures[side].take(part, pixels);
    redraw();
    ask();
}

void ComparisonCanvas::setNotice(const QString& notice)
{
    m_notice = notice;
    update();
}

void ComparisonCanvas::setProgress(std::optional<double> progress)
{
    if (m_progress == progress) return;
    m_progress = progress;
    update();
}

bool ComparisonCanvas::isComplete() const
{
    return std::ranges::none_of(m_asked, [](const auto& part) { return part.has_value(); });
}

bool ComparisonCanvas::hasBoth() const
{
    return !m_pictures[original].size().isEmpty() && !m_pictures[output].size().isEmpty();
}

bool ComparisonCanvas::isEmpty() const
{
    return std::ranges::all_of(m_pictures, &ShownPicture::isEmpty);
}

// What is not asked for already.
void ComparisonCanvas::ask()
{
    for (const Side side : {original, output}) {
        const auto part = m_pictures[side].lackFor(m_geometry);
        if (m_asked[side] == part) continue;
        m_asked[side] = part;
        if (part) Q_EMIT wanted(side, *part);
    }
}

void ComparisonCanvas::redraw()
{
    m_difference = {};
    update();
}

void ComparisonCanvas::fit()
{
    m_geometry.fit();
    redraw();
    m_asking.start();
    Q_EMIT changed();
}

void ComparisonCanvas::zoomTo(double zoom)
{
    zoomTo(zoom, QRectF(QPointF(), m_geometry.view()).center());
}

void ComparisonCanvas::zoomTo(double zoom, QPointF anchor)
{
    m_geometry.zoomTo(zoom, anchor);
    redraw();
    if (!m_asking.isActive()) m_asking.start();
    Q_EMIT changed();
}

void ComparisonCanvas::stepZoom(int steps)
{
    zoomTo(m_geometry.zoom() * std::pow(zoomStep, steps));
}

void ComparisonCanvas::panBy(QPointF way)
{
    m_geometry.panBy(way * devicePixelRatioF());
    redraw();
    if (!m_asking.isActive()) m_asking.start();
}

void ComparisonCanvas::setSplit(double split)
{
    m_split = std::clamp(split, 0.0, 1.0);
    update();
    Q_EMIT changed();
}

void ComparisonCanvas::setFlipped(bool flipped)
{
    if (m_flipped == flipped) return;
    m_flipped = flipped;
    update();
    Q_EMIT changed();
}

void ComparisonCanvas::setShowsDifference(bool shows)
{
    m_showsDifference = shows;
    redraw();
    Q_EMIT changed();
}

bool ComparisonCanvas::event(QEvent* event)
{
    switch (event->type()) {
    case QEvent::Gesture:
        return takeGesture(*static_cast<QGestureEvent*>(event));
    case QEvent::NativeGesture:
        return takeNativeGesture(*static_cast<QNativeGestureEvent*>(event));
    default:
        return QWidget::event(event);
    }
}

bool ComparisonCanvas::takeGesture(QGestureEvent& event)
{
    const auto* pinch = static_cast<QPinchGesture*>(event.gesture(Qt::PinchGesture));
    if (!pinch) return false;
    const QPointF centre = mapFromGlobal(pinch->centerPoint()) * devicePixelRatioF();
    zoomTo(m_geometry.zoom() * pinch->scaleFactor(), centre);
    return true;
}

// What touchpads send instead of touches.
bool ComparisonCanvas::takeNativeGesture(const QNativeGestureEvent& event)
{
    if (event.gestureType() != Qt::ZoomNativeGesture) return false;
    zoomTo(m_geometry.zoom() * (1 + event.value()), event.position() * devicePixelRatioF());
    return true;
}

void ComparisonCanvas::wheelEvent(QWheelEvent* event)
{
    constexpr double doubling = 360; // three notches
    zoomTo(m_geometry.zoom() * std::exp2(event->angleDelta().y() / doubling),
           event->position() * devicePixelRatioF());
    event->accept();
}

ComparisonCanvas::Drag ComparisonCanvas::dragAt(QPointF place) const
{
    constexpr double reach = 14;
    const bool hasLine = hasBoth() && !m_showsDifference;
    const bool isAtLine = std::abs(place.x() - m_split * width()) <= reach;
    if (hasLine && (isAtLine || m_geometry.fits())) return Drag::line;
    return m_geometry.fits() ? Drag::none : Drag::pictures;
}

void ComparisonCanvas::showCursorAt(QPointF place)
{
    const Drag drag = m_drag == Drag::none ? dragAt(place) : m_drag;
    if (drag == Drag::line) return setCursor(Qt::SplitHCursor);
    if (drag == Drag::none) return unsetCursor();
    setCursor(m_drag == Drag::none ? Qt::OpenHandCursor : Qt::ClosedHandCursor);
}

void ComparisonCanvas::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) return;
    m_drag = dragAt(event->position());
    m_dragged = event->position();
    if (m_drag == Drag::line) setSplit(event->position().x() / width());
    showCursorAt(event->position());
}

void ComparisonCanvas::mouseMoveEvent(QMouseEvent* event)
{
    const QPointF way = event->position() - m_dragged;
    if (m_drag == Drag::line) setSplit(event->position().x() / width());
    if (m_drag == Drag::pictures) panBy(way);
    m_dragged = event->position();
    showCursorAt(event->position());
}

void ComparisonCanvas::mouseReleaseEvent(QMouseEvent* event)
{
    m_drag = Drag::none;
    showCursorAt(event->position());
}

void ComparisonCanvas::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_geometry.fits()) return zoomTo(1, event->position() * devicePixelRatioF());
    fit();
}

void ComparisonCanvas::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    takeSize();
}

// Of this screen, which may not be that of before.
void ComparisonCanvas::takeSize()
{
    const QSize pixels = (QSizeF(size()) * devicePixelRatioF()).toSize();
    if (m_geometry.view() == pixels) return;
    m_geometry.setView(pixels);
    redraw();
    m_asking.start();
    Q_EMIT changed();
}

// The original is on the leading side.
ComparisonCanvas::Side ComparisonCanvas::sideOf(bool leading) const
{
    return leading != m_flipped ? original : output;
}

QRect ComparisonCanvas::sideArea(bool leading) const
{
    const int line = static_cast<int>(std::lround(m_split * width()));
    const bool isLeft = leading != isRightToLeft();
    return isLeft ? QRect(0, 0, line, height()) : QRect(line, 0, width() - line, height());
}

void ComparisonCanvas::paintEvent(QPaintEvent*)
{
    takeSize();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath shape;
    shape.addRoundedRect(rect(), cornerRadius, cornerRadius);
    painter.setClipPath(shape);
    painter.fillRect(rect(), TidewellTheme::leatherDeep());
    if (m_showsDifference && hasBoth())
        paintDifference(painter);
    else
        paintPictures(painter);
    paintLabels(painter);
    if (m_progress) overlays::paintProgress(painter, rect(), *m_progress, layoutDirection());
    paintNotice(painter);
    painter.setClipping(false);
    paintRounded(painter, rect(), cornerRadius, Qt::NoBrush,
                 TidewellTheme::withOpacity(TidewellTheme::cream(), 0.16));
    if (hasFocus()) paintFocusRing(painter, rect(), cornerRadius, TidewellTheme::copperBright());
}

void ComparisonCanvas::paintPictures(QPainter& painter)
{
    if (!hasBoth()) {
        for (const Side side : {original, output})
            paintSide(painter, side, rect());
        return;
    }
    for (const bool leading : {true, false})
        paintSide(painter, sideOf(leading), sideArea(leading));
    overlays::paintLine(painter, rect(), m_split * width(), hasFocus());
}

void ComparisonCanvas::paintSide(QPainter& painter, Side side, const QRect& area)
{
    if (m_pictures[side].isEmpty()) return;
    const double ratio = devicePixelRatioF();
    painter.save();
    painter.setClipRect(area, Qt::IntersectClip);
    painter.scale(1 / ratio, 1 / ratio);
    painter.fillRect(m_geometry.frame(), overlays::checkerboard());
    m_pictures[side].paint(painter, m_geometry);
    painter.restore();
}

QImage ComparisonCanvas::rendered(Side side) const
{
    QImage image(m_geometry.view(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    m_pictures[side].paint(painter, m_geometry);
    return image;
}

void ComparisonCanvas::paintDifference(QPainter& painter)
{
    if (m_pictures[original].isEmpty() || m_pictures[output].isEmpty()) return;
    if (m_difference.isNull()) m_difference = amplifiedDifference(rendered(original), rendered(output));
    painter.drawImage(QRectF(rect()), m_difference);
}

void ComparisonCanvas::paintLabels(QPainter& painter) const
{
    using overlays::Corner;
    const Corner leadingCorner = isRightToLeft() ? Corner::right : Corner::left;
    if (hasBoth() && m_showsDifference)
        return overlays::paintLabel(painter, rect(), leadingCorner,
                                    QStringLiteral("Difference \u00D7 %1").arg(differenceGain));
    for (const bool leading : {true, false}) {
        const Side side = sideOf(leading);
        if (m_pictures[side].size().isEmpty()) continue;
        const bool isLeft = leading != isRightToLeft();
        const QRect area = hasBoth() ? sideArea(leading) : rect();
        overlays::paintLabel(painter, area, isLeft ? Corner::left : Corner::right, nameOf(side));
    }
}

void ComparisonCanvas::paintNotice(QPainter& painter) const
{
    if (isEmpty() && m_progress)
        return overlays::paintNotice(painter, rect(), QStringLiteral("Reading the pictures..."), true);
    const bool isAlone = m_pictures[original].size().isEmpty() && m_pictures[output].size().isEmpty();
    if (!m_notice.isEmpty()) overlays::paintNotice(painter, rect(), m_notice, isAlone);
}

} // namespace lumora
