// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One of the two pictures as far as it is drawn: the whole, as large as the view shows it when it fits, and
// over it, zoomed in, the part in sight. Each has at most as many pixels as the view. Main thread.
#pragma once

#include "records/picture_part.h"
#include "ui/comparison/comparison_geometry.h"

#include <QImage>

#include <optional>

class QPainter;

namespace lumora {

class ShownPicture
{
public:
    // The picture's own pixels, upright.
    void setSize(QSize size) { m_size = size; }
    QSize size() const { return m_size; }
    bool isEmpty() const { return m_whole.isNull(); }

    // What this view lacks, the whole first; absent when it has all.
    std::optional<PicturePart> lackFor(const ComparisonGeometry& geometry);
    void take(const PicturePart& part, const QImage& pixels);

    // In device pixels of the view.
    void paint(QPainter& painter, const ComparisonGeometry& geometry) const;

private:
    PicturePart wholeFor(const ComparisonGeometry& geometry) const;
    PicturePart partFor(const ComparisonGeometry& geometry) const;

    QSize m_size;
    PicturePart m_wantedWhole;
    QImage m_whole;
    PicturePart m_wholePlace;
    QImage m_part;
    PicturePart m_partPlace;
};

} // namespace lumora
