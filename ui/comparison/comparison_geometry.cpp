// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/comparison_geometry.h"

#include <algorithm>
#include <cmath>

namespace lumora {

void ComparisonGeometry::setFrame(QSize pixels)
{
    if (m_frame == pixels) return;
    m_frame = pixels;
    fit();
}

void ComparisonGeometry::setView(QSize size)
{
    m_view = size;
    if (!m_fits) zoomTo(m_zoom);
}

double ComparisonGeometry::fittingZoom() const
{
    if (isEmpty()) return 1;
    return std::min({1.0, static_cast<double>(m_view.width()) / m_frame.width(),
                     static_cast<double>(m_view.height()) / m_frame.height()});
}

double ComparisonGeometry::zoom() const
{
    return m_fits ? fittingZoom() : m_zoom;
}

void ComparisonGeometry::fit()
{
    m_fits = true;
    m_centre = {0.5, 0.5};
}

void ComparisonGeometry::zoomTo(double zoom, QPointF anchor)
{
    if (isEmpty()) return;
    const double wanted = std::min(zoom, mostZoom);
    if (wanted <= fittingZoom()) return fit();
    const QPointF fromCentre = anchor - QRectF(QPointF(), m_view).center();
    const QSizeF before = extent();
    m_fits = false;
    m_zoom = wanted;
    const QSizeF after = extent();
    m_centre += {fromCentre.x() / before.width() - fromCentre.x() / after.width(),
                 fromCentre.y() / before.height() - fromCentre.y() / after.height()};
    clampCentre();
}

void ComparisonGeometry::panBy(QPointF way)
{
    if (isEmpty()) return;
    m_centre -= {way.x() / extent().width(), way.y() / extent().height()};
    clampCentre();
}

QSizeF ComparisonGeometry::extent() const
{
    return QSizeF(m_frame) * zoom();
}

// No ground is shown that a picture could cover.
void ComparisonGeometry::clampCentre()
{
    const auto clamped = [](double centre, double view, double frame) {
        const double half = std::min(0.5, view / frame / 2);
        return std::clamp(centre, half, 1 - half);
    };
    m_centre = {clamped(m_centre.x(), m_view.width(), extent().width()),
                clamped(m_centre.y(), m_view.height(), extent().height())};
}

// Whole pixels, so that pictures that fit are shown as they were drawn.
QRect ComparisonGeometry::frame() const
{
    if (isEmpty()) return {};
    const QSize size = extent().toSize().expandedTo({1, 1});
    const auto edge = [](double view, int length, double centre) {
        return static_cast<int>(std::lround(view / 2 - length * centre));
    };
    return {QPoint(edge(m_view.width(), size.width(), m_centre.x()),
                   edge(m_view.height(), size.height(), m_centre.y())),
            size};
}

QRectF ComparisonGeometry::visible() const
{
    if (isEmpty()) return {};
    const QRectF whole = frame();
    const QRectF seen = whole.intersected(QRectF(QPointF(), m_view)).translated(-whole.topLeft());
    return {seen.x() / whole.width(), seen.y() / whole.height(), seen.width() / whole.width(),
            seen.height() / whole.height()};
}

} // namespace lumora
