// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ppm_writer.h"

#include "pixels/drawing.h"
#include "pixels/row_reader.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace lumora {
namespace {

using Step = PpmError::Step;

// Four bytes at once, of which the next pixel overwrites the last: `rgb` has room for one byte more.
void dropAlpha(const std::uint8_t* rgba, std::byte* rgb, std::size_t pixels)
{
    for (std::size_t i = 0; i < pixels; ++i, rgba += 4, rgb += 3)
        std::memcpy(rgb, rgba, 4);
}

Result<Done, PpmError> appendRows(RowReader& rows, OutputFile& file)
{
    constexpr int rowsAtOnce = 64;
    const auto width = static_cast<std::size_t>(rows.width());
    std::vector<std::byte> rgb(width * rowsAtOnce * 3 + 1);
    for (int top = 0; top < rows.height(); top += rowsAtOnce) {
        const int count = std::min(rowsAtOnce, rows.height() - top);
        const auto rgba = rows.rows(top, count);
        if (!rgba) return PpmError{Step::drawing, rgba.error()};
        for (int y = 0; y < count; ++y)
            dropAlpha(rgba->first + y * rgba->stride, rgb.data() + static_cast<std::size_t>(y) * width * 3,
                      width);
        const auto strip = std::span(rgb).first(width * static_cast<std::size_t>(count) * 3);
        if (const auto status = file.append(strip); !status) return PpmError{Step::writing, status.error()};
    }
    return Done{};
}

} // namespace

Result<Done, PpmError> writePpm(const Image& image, OutputFile& file)
{
    const auto bitmap = drawRegardless(image, {image.width(), image.height(), ColorSpace::deviceRGB});
    if (!bitmap) return PpmError{Step::drawing, bitmap.error()};
    auto rows = RowReader::open(*bitmap);
    if (!rows) return PpmError{Step::drawing, rows.error()};
    const std::string header =
        "P6\n" + std::to_string(rows->width()) + " " + std::to_string(rows->height()) + "\n255\n";
    if (const auto status = file.append(std::as_bytes(std::span(header))); !status)
        return PpmError{Step::writing, status.error()};
    return appendRows(*rows, file);
}

} // namespace lumora
