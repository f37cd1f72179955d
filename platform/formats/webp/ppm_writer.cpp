// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ppm_writer.h"

#include "pixels/drawing.h"
#include "pixels/interleaving.h"
#include "pixels/row_reader.h"

#include <algorithm>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace lumora {
namespace {

using Step = PpmError::Step;

Result<Done, PpmError> appendRows(RowReader& rows, OutputFile& file)
{
    constexpr int rowsAtOnce = 64;
    const auto width = static_cast<std::size_t>(rows.width());
    std::vector<std::uint8_t> rgb(width * rowsAtOnce * 3);
    for (int top = 0; top < rows.height(); top += rowsAtOnce) {
        const int count = std::min(rowsAtOnce, rows.height() - top);
        const auto drawn = rows.rows(top, count);
        if (!drawn) return PpmError{Step::drawing, drawn.error()};
        if (rows.format().hasAlpha) {
            for (int y = 0; y < count; ++y)
                dropFourth(drawn->first + y * drawn->stride, rows.width(),
                           rgb.data() + static_cast<std::size_t>(y) * width * 3);
        } else {
            copyRows(*drawn, count, width * 3, rgb.data());
        }
        const auto strip = std::span(rgb).first(width * static_cast<std::size_t>(count) * 3);
        if (const auto status = file.append(std::as_bytes(strip)); !status)
            return PpmError{Step::writing, status.error()};
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
