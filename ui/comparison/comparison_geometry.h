// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where two pictures in register lie in a view: one frame, into which both are laid from edge to edge, its
// zoom and its place. Lengths are device pixels of the view. Pure; a value.
#pragma once

#include <QPointF>
#include <QRect>
#include <QRectF>
#include <QSize>

namespace lumora {

class ComparisonGeometry
{
public:
    static constexpr double mostZoom = 8;
    static constexpr double sharpFrom = 2; // pixels are seen as squares

    // The pixels of the larger picture. The zoom is that which fits, the pictures in the middle.
    void setFrame(QSize pixels);
    // Pictures that fitted fit again; others keep what lies in the middle.
    void setView(QSize size);

    bool isEmpty() const { return m_frame.isEmpty() || m_view.isEmpty(); }
    QSize view() const { return m_view; }

    // Pixels of the view for one of the frame; never more than 1 to fit.
    double zoom() const;
    double fittingZoom() const;
    bool fits() const { return m_fits; }
    bool isSharp() const { return zoom() >= sharpFrom; }

    void fit();
    // To a zoom between the fitting one and the most, what lies under `anchor` staying there.
    void zoomTo(double zoom, QPointF anchor);
    void zoomTo(double zoom) { zoomTo(zoom, QRectF(QPointF(), m_view).center()); }
    // Moves the pictures under the view, at most to their edges.
    void panBy(QPointF way);

    // The whole frame, in the view.
    QRect frame() const;
    // The part of the frame in sight, in parts of its edges: 0 to 1.
    QRectF visible() const;

private:
    QSizeF extent() const;
    void clampCentre();

    QSize m_frame;
    QSize m_view;
    bool m_fits = true;
    double m_zoom = 1;          // where it does not fit
    QPointF m_centre{0.5, 0.5}; // of the view, in parts of the frame
};

} // namespace lumora
