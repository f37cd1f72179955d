// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/shown_picture.h"

#include <QPainter>

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

namespace lumora {
namespace {

PicturePart wholeOf(QSize size)
{
    return {size.width(), size.height(), 0, 0, size.width(), size.height()};
}

// Whether the one has all pixels of the other.
bool covers(const PicturePart& part, const PicturePart& other)
{
    return part.width == other.width && part.height == other.height && part.left <= other.left &&
           part.top <= other.top && part.left + part.columns >= other.left + other.columns &&
           part.top + part.rows >= other.top + other.rows;
}

// From the first pixel in sight to behind the last.
std::pair<int, int> pixelsIn(double begin, double length, int edge)
{
    const int first = std::clamp(static_cast<int>(std::floor(begin * edge)), 0, edge - 1);
    const int end = std::clamp(static_cast<int>(std::ceil((begin + length) * edge)), first + 1, edge);
    return {first, end};
}

// The same length or a longer one around it, within the edge.
std::pair<int, int> grown(int first, int length, double factor, int edge)
{
    const int longer = std::min(edge, static_cast<int>(length * factor));
    return {std::clamp(first - (longer - length) / 2, 0, edge - longer), longer};
}

// With what lies around it, as far as the view has pixels for it: what comes into sight next is there
// already.
PicturePart withSurroundings(PicturePart part, QSize view)
{
    const double pixels = static_cast<double>(part.columns) * part.rows;
    const double factor =
        std::max(1.0, std::sqrt(static_cast<double>(view.width()) * view.height() / pixels));
    std::tie(part.left, part.columns) = grown(part.left, part.columns, factor, part.width);
    std::tie(part.top, part.rows) = grown(part.top, part.rows, factor, part.height);
    return part;
}

// Where the part lies when its drawing is laid over the frame.
QRectF placeIn(const QRect& frame, const PicturePart& part)
{
    const double x = static_cast<double>(frame.width()) / part.width;
    const double y = static_cast<double>(frame.height()) / part.height;
    return {frame.x() + part.left * x, frame.y() + part.top * y, part.columns * x, part.rows * y};
}

} // namespace

PicturePart ShownPicture::wholeFor(const ComparisonGeometry& geometry) const
{
    ComparisonGeometry fitting = geometry;
    fitting.fit();
    return wholeOf(fitting.frame().size().boundedTo(m_size));
}

PicturePart ShownPicture::partFor(const ComparisonGeometry& geometry) const
{
    PicturePart part = wholeOf(geometry.frame().size().boundedTo(m_size));
    const QRectF seen = geometry.visible();
    const auto [left, right] = pixelsIn(seen.x(), seen.width(), part.width);
    const auto [top, bottom] = pixelsIn(seen.y(), seen.height(), part.height);
    part.left = left;
    part.top = top;
    part.columns = right - left;
    part.rows = bottom - top;
    return part;
}

std::optional<PicturePart> ShownPicture::lackFor(const ComparisonGeometry& geometry)
{
    if (m_size.isEmpty() || geometry.isEmpty()) return std::nullopt;
    const PicturePart whole = wholeFor(geometry);
    if (m_whole.isNull() || whole != m_wholePlace) return m_wantedWhole = whole;
    const PicturePart part = partFor(geometry);
    if (part.width <= whole.width && part.height <= whole.height) return std::nullopt;
    if (!m_part.isNull() && covers(m_partPlace, part)) return std::nullopt;
    return withSurroundings(part, geometry.view());
}

void ShownPicture::take(const PicturePart& part, const QImage& pixels)
{
    const bool isWhole = part == m_wantedWhole;
    (isWhole ? m_whole : m_part) = pixels;
    (isWhole ? m_wholePlace : m_partPlace) = part;
}

void ShownPicture::paint(QPainter& painter, const ComparisonGeometry& geometry) const
{
    if (isEmpty()) return;
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform, !geometry.isSharp());
    const QRect frame = geometry.frame();
    painter.drawImage(placeIn(frame, m_wholePlace), m_whole);
    const bool isFiner = m_partPlace.width > m_wholePlace.width || m_partPlace.height > m_wholePlace.height;
    if (!geometry.fits() && !m_part.isNull() && isFiner)
        painter.drawImage(placeIn(frame, m_partPlace), m_part);
    painter.restore();
}

} // namespace lumora
