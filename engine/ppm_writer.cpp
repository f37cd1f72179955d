// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/ppm_writer.h"

#include "pixels/drawing.h"
#include "pixels/row_reader.h"
#include "records/errors.h"
#include "system/atomic_file.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace lumora::ImageOptimizer {
namespace {

[[noreturn]] void fail(const std::filesystem::path& url, const Error& error)
{
    throw ImageOptimizerError::cannotFinalize(url, error.description);
}

// Four bytes at once, of which the next pixel overwrites the last: `rgb` has room for one byte more.
void dropAlpha(const std::uint8_t* rgba, std::byte* rgb, std::size_t pixels)
{
    for (std::size_t i = 0; i < pixels; ++i, rgba += 4, rgb += 3)
        std::memcpy(rgb, rgba, 4);
}

void appendRows(AtomicFile& file, const Image& bitmap, const std::filesystem::path& url)
{
    auto rows = RowReader::open(bitmap);
    if (!rows) throw ImageOptimizerError::cannotCreateDestination(url);
    constexpr int rowsAtOnce = 64;
    const auto width = static_cast<std::size_t>(rows->width());
    std::vector<std::byte> rgb(width * rowsAtOnce * 3 + 1);
    for (int top = 0; top < rows->height(); top += rowsAtOnce) {
        const int count = std::min(rowsAtOnce, rows->height() - top);
        const auto rgba = rows->rows(top, count);
        if (!rgba) throw ImageOptimizerError::cannotCreateDestination(url);
        for (int y = 0; y < count; ++y)
            dropAlpha(rgba->first + y * rgba->stride, rgb.data() + static_cast<std::size_t>(y) * width * 3,
                      width);
        if (const auto status =
                file.append(std::span(rgb).first(width * static_cast<std::size_t>(count) * 3));
            !status)
            fail(url, status.error());
    }
}

} // namespace

void writePPM(const Image& image, const std::filesystem::path& url)
{
    const auto bitmap = draw(image, {image.width(), image.height(), ColorSpace::deviceRGB});
    if (!bitmap) throw ImageOptimizerError::cannotCreateDestination(url);
    auto file = AtomicFile::create(url);
    if (!file) fail(url, file.error());

    const std::string header =
        "P6\n" + std::to_string(bitmap->width()) + " " + std::to_string(bitmap->height()) + "\n255\n";
    if (const auto status = file->append(std::as_bytes(std::span(header))); !status)
        fail(url, status.error());
    appendRows(*file, *bitmap, url);
    if (const auto status = file->commit(); !status) fail(url, status.error());
}

} // namespace lumora::ImageOptimizer
