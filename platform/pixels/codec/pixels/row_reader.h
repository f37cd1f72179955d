// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a picture, as stored and not turned, as interleaved 8-bit components, decoded strip by strip as
// they are asked for. One thread.
#pragma once

#include "pixels/image.h"
#include "pixels/vips_library.h"
#include "system/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>

struct _VipsRegion;

namespace lumora {

// What the components of a row mean.
enum class ColorModel { gray, rgb, cmyk };

// Absent for Lab and other rare ones.
std::optional<ColorModel> colorModelOf(const _VipsImage* image);

struct RowFormat
{
    ColorModel model;
    bool hasAlpha; // never with cmyk
    bool operator==(const RowFormat&) const = default;
    int bands() const
    {
        return (model == ColorModel::gray ? 1 : model == ColorModel::rgb ? 3 : 4) + (hasAlpha ? 1 : 0);
    }
    // Of the RGB or RGBA that it becomes.
    int drawnBands() const { return hasAlpha ? 4 : 3; }
};

// Rows one after another in somebody else's memory, `stride` bytes from one to the next.
struct RowSpan
{
    const std::uint8_t* first;
    std::ptrdiff_t stride;
};

// Tightly packed; `rowBytes` is at most the stride.
void copyRows(const RowSpan& rows, int count, std::size_t rowBytes, std::uint8_t* to);

// A region by which one reader takes the rows of a picture from the top down and none again. Rows that are
// made when they are asked for (row_stream.h) are then made in its memory, and not kept for others.
using RegionPtr = std::unique_ptr<_VipsRegion, VipsUnref>;
RegionPtr regionForEachRowOnce(_VipsImage* image);
bool isForEachRowOnce(_VipsRegion* region);

class RowReader
{
public:
    // Pictures of other models (Lab, floating point, more bands) are brought to sRGB on the way; deeper
    // components are reduced to 8 bits. Fails for fewer components than their model has.
    static Result<RowReader> open(const Image& image);

    int width() const; // in pixels
    int height() const;
    RowFormat format() const { return m_format; }
    // Whether the components are still those that the embedded profile describes.
    bool keepsProfileSpace() const { return m_keepsProfileSpace; }

    // `count` rows from row `first` on, which stay valid until the next request. Rows must be asked for from
    // the top down, each once. Fails when they are damaged or missing.
    Result<RowSpan> rows(int first, int count);
    // The same, copied into `rows`, tightly packed.
    Status read(int first, int count, std::uint8_t* rows);

    // The picture that the rows are of, in the format that they have.
    _VipsImage* picture() const { return m_image.get(); }

private:
    RowReader(VipsImagePtr image, RowFormat format, bool keepsProfileSpace);

    VipsImagePtr m_image;
    RegionPtr m_region;
    RowFormat m_format;
    bool m_keepsProfileSpace;
};

// `count` whole rows of the region's picture; as RowReader::rows.
Result<RowSpan> rowsOf(_VipsRegion* region, int first, int count);

} // namespace lumora
