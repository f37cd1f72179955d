// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "webp/ppm_writer.h"

#include "pixels/drawing.h"
#include "pixels/row_reader.h"
#include "system/atomic_file.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace lumora {
namespace {

using Step = CwebpError::Step;

// Four bytes at once, of which the next pixel overwrites the last: `rgb` has room for one byte more.
void dropAlpha(const std::uint8_t* rgba, std::byte* rgb, std::size_t pixels)
{
    for (std::size_t i = 0; i < pixels; ++i, rgba += 4, rgb += 3)
        std::memcpy(rgb, rgba, 4);
}

class PpmWriter
{
public:
    explicit PpmWriter(const std::filesystem::path& path) : m_path(path) {}

    Result<Done, CwebpError> write(const Image& bitmap)
    {
        auto rows = RowReader::open(bitmap);
        if (!rows) return failure(Step::drawing, rows.error());
        auto file = AtomicFile::create(m_path);
        if (!file) return failure(Step::writingPpm, file.error());
        const std::string header =
            "P6\n" + std::to_string(rows->width()) + " " + std::to_string(rows->height()) + "\n255\n";
        if (const auto status = file->append(std::as_bytes(std::span(header))); !status)
            return failure(Step::writingPpm, status.error());
        if (auto status = appendRows(*rows, *file); !status) return status;
        if (const auto status = file->commit(); !status) return failure(Step::writingPpm, status.error());
        return Done{};
    }

private:
    CwebpError failure(Step step, const Error& error) const { return {step, m_path, error.description}; }

    Result<Done, CwebpError> appendRows(RowReader& rows, AtomicFile& file) const
    {
        constexpr int rowsAtOnce = 64;
        const auto width = static_cast<std::size_t>(rows.width());
        std::vector<std::byte> rgb(width * rowsAtOnce * 3 + 1);
        for (int top = 0; top < rows.height(); top += rowsAtOnce) {
            const int count = std::min(rowsAtOnce, rows.height() - top);
            const auto rgba = rows.rows(top, count);
            if (!rgba) return failure(Step::drawing, rgba.error());
            for (int y = 0; y < count; ++y)
                dropAlpha(rgba->first + y * rgba->stride,
                          rgb.data() + static_cast<std::size_t>(y) * width * 3, width);
            const auto strip = std::span(rgb).first(width * static_cast<std::size_t>(count) * 3);
            if (const auto status = file.append(strip); !status)
                return failure(Step::writingPpm, status.error());
        }
        return Done{};
    }

    const std::filesystem::path& m_path;
};

} // namespace

Result<Done, CwebpError> writePpm(const Image& image, const std::filesystem::path& file)
{
    const auto bitmap = drawRegardless(image, {image.width(), image.height(), ColorSpace::deviceRGB});
    if (!bitmap) return CwebpError{Step::drawing, file, bitmap.error().description};
    return PpmWriter(file).write(*bitmap);
}

} // namespace lumora
