// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/rgba_writer.h"

#include "pixels/drawing.h"
#include "pixels/interleaving.h"
#include "pixels/row_reader.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <vector>

namespace lumora {
namespace {

constexpr int pixelBytes = 4;

// Of the drawing's row, from a column on.
void takeRgba(const std::uint8_t* row, int bands, const PicturePart& part, std::uint8_t* rgba)
{
    const std::uint8_t* const from = row + std::ptrdiff_t{part.left} * bands;
    if (bands == pixelBytes) {
        std::memcpy(rgba, from, static_cast<std::size_t>(part.columns) * pixelBytes);
    } else {
        addFourth(from, part.columns, rgba);
    }
}

Status appendRows(RowReader& rows, const PicturePart& part, OutputFile& file)
{
    constexpr int rowsAtOnce = 64;
    const auto rowBytes = static_cast<std::size_t>(part.columns) * pixelBytes;
    std::vector<std::uint8_t> strip(rowBytes * rowsAtOnce);
    const int end = part.top + part.rows;
    // The rows above the part are made as well: they come in order.
    for (int top = 0; top < end; top += rowsAtOnce) {
        const int count = std::min(rowsAtOnce, end - top);
        const auto drawn = rows.rows(top, count);
        if (!drawn) return drawn.error();
        const int skipped = std::clamp(part.top - top, 0, count);
        std::uint8_t* to = strip.data();
        for (int y = skipped; y < count; ++y, to += rowBytes)
            takeRgba(drawn->first + y * drawn->stride, rows.format().bands(), part, to);
        if (auto status = file.append(std::as_bytes(std::span(strip.data(), to))); !status) return status;
    }
    return Done{};
}

} // namespace

bool isPartOf(const PicturePart& part, std::int64_t width, std::int64_t height)
{
    return part.width >= 1 && part.height >= 1 && part.width <= width && part.height <= height &&
           part.left >= 0 && part.top >= 0 && part.columns >= 1 && part.rows >= 1 &&
           part.left <= part.width - part.columns && part.top <= part.height - part.rows;
}

Status writeRgba(const Image& image, const PicturePart& part, OutputFile& file)
{
    const auto bitmap = drawRegardless(image, {part.width, part.height, ColorSpace::sRGB});
    if (!bitmap) return bitmap.error();
    auto rows = RowReader::open(*bitmap);
    if (!rows) return rows.error();
    return appendRows(*rows, part, file);
}

} // namespace lumora
