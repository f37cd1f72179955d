// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The two pictures in register, divided by a line: one on its leading side, the other on its trailing one.
// Looks and motions; what drives it by keys and buttons is the view around it. Main thread.
#pragma once

#include "ui/comparison/comparison_geometry.h"
#include "ui/comparison/shown_picture.h"

#include <QTimer>
#include <QWidget>

#include <array>
#include <optional>

class QGestureEvent;
class QNativeGestureEvent;

namespace lumora {

class ComparisonCanvas : public QWidget
{
    Q_OBJECT

public:
    enum Side { original, output };

    explicit ComparisonCanvas(QWidget* parent = nullptr);

    // Neither picture is known; the zoom is that which fits.
    void clear();
    // What there is to show: the sizes of both pictures, empty for one that there is not.
    void setSizes(QSize originalSize, QSize outputSize);
    void take(Side side, const PicturePart& part, const QImage& pixels);
    // One sentence over the pictures, in place of what is missing; empty for none.
    void setNotice(const QString& notice);
    // Of what is still to come, from 0 to 1; absent while nothing is.
    void setProgress(std::optional<double> progress);
    // Whether all that the view has room for is drawn.
    bool isComplete() const;
    bool hasBoth() const;
    // Neither picture is drawn yet.
    bool isEmpty() const;

    const ComparisonGeometry& geometry() const { return m_geometry; }
    void fit();
    void zoomTo(double zoom);
    // One step in for 1, one out for -1.
    void stepZoom(int steps);
    // In logical pixels.
    void panBy(QPointF way);
    // The line, from 0 at the left edge to 1.
    double split() const { return m_split; }
    void setSplit(double split);
    // Each picture in place of the other.
    bool isFlipped() const { return m_flipped; }
    void setFlipped(bool flipped);
    bool showsDifference() const { return m_showsDifference; }
    void setShowsDifference(bool shows);

    QSize sizeHint() const override { return {720, 480}; }
    QSize minimumSizeHint() const override { return {160, 120}; }

Q_SIGNALS:
    void wanted(lumora::ComparisonCanvas::Side side, const lumora::PicturePart& part);
    // Zoom, line or which picture is where.
    void changed();

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;

private:
    enum class Drag { none, line, pictures };

    bool takeGesture(QGestureEvent& event);
    bool takeNativeGesture(const QNativeGestureEvent& event);
    void zoomTo(double zoom, QPointF anchor);
    Drag dragAt(QPointF place) const;
    void showCursorAt(QPointF place);
    void takeSize();
    void redraw();
    void ask();

    Side sideOf(bool leading) const;
    QRect sideArea(bool leading) const;
    void paintPictures(QPainter& painter);
    void paintSide(QPainter& painter, Side side, const QRect& area);
    void paintDifference(QPainter& painter);
    void paintLabels(QPainter& painter) const;
    void paintNotice(QPainter& painter) const;
    QImage rendered(Side side) const;

    std::array<ShownPicture, 2> m_pictures;
    std::array<std::optional<PicturePart>, 2> m_asked;
    ComparisonGeometry m_geometry;
    double m_split = 0.5;
    bool m_flipped = false;
    bool m_showsDifference = false;
    QImage m_difference; // null where it has to be made anew
    QString m_notice;
    std::optional<double> m_progress;
    QTimer m_asking;
    Drag m_drag = Drag::none;
    QPointF m_dragged; // up to here
};

} // namespace lumora
