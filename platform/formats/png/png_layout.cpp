// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_layout.h"

#include "pixels/row_reading.h"
#include "pixels/stored_form.h"

#include <vips/vips.h>

#include <optional>
#include <utility>

namespace lumora {
namespace {

int colorTypeOf(int bands)
{
    switch (bands) {
    case 1:
        return 0;
    case 2:
        return 4;
    case 3:
        return 2;
    default:
        return 6;
    }
}

Result<PngLayout> directLayout(VipsImage* image)
{
    const bool isDeep = vips_image_get_format(image) == VIPS_FORMAT_USHORT;
    const auto width = static_cast<std::size_t>(vips_image_get_width(image));
    const auto height = static_cast<std::size_t>(vips_image_get_height(image));
    const std::size_t rowBytes = rowBytesOf(image);
    FilterableRows pixels(rowBytes, height);
    std::uint8_t* to = pixels.rows().data();
    const auto status = readRows(image, [&](int, int count, const RowSpan& rows) -> Status {
        copyRows(rows, count, rowBytes, to);
        to += rowBytes * static_cast<std::size_t>(count);
        return Done{};
    });
    if (!status) return status.error();
    if (isDeep) { // most significant byte first
        const auto rows = pixels.rows();
        for (std::size_t i = 0; i + 1 < rows.size(); i += 2)
            std::swap(rows[i], rows[i + 1]);
    }
    return PngLayout{width,
                     height,
                     isDeep ? 16 : 8,
                     colorTypeOf(vips_image_get_bands(image)),
                     rowBytes,
                     pixelBytesOf(image),
                     std::move(pixels),
                     {}};
}

int indexBits(std::size_t colors)
{
    return colors <= 2 ? 1 : colors <= 4 ? 2 : colors <= 16 ? 4 : 8;
}

// One byte a pixel brought into fewer bits.
PngLayout packed(const PngLayout& direct, const std::vector<std::uint8_t>& values, int bits, int colorType)
{
    const std::size_t perByte = 8 / static_cast<std::size_t>(bits);
    const std::size_t rowBytes = (direct.width + perByte - 1) / perByte;
    FilterableRows pixels(rowBytes, direct.height);
    const auto rows = pixels.rows();
    for (std::size_t y = 0; y < direct.height; ++y) {
        for (std::size_t x = 0; x < direct.width; ++x) {
            const auto shift = static_cast<unsigned>(8 - bits * static_cast<int>(x % perByte + 1));
            auto& byte = rows[y * rowBytes + x / perByte];
            const unsigned before = x % perByte == 0 ? 0U : unsigned{byte};
            byte = static_cast<std::uint8_t>(before | unsigned{values[y * direct.width + x]} << shift);
        }
    }
    return {direct.width, direct.height, bits, colorType, rowBytes, 1, std::move(pixels), {}};
}

// Absent when there are too many colours, or when plain gray is as small.
std::optional<PngLayout> paletteLayout(const PngLayout& direct)
{
    if (direct.bitDepth != 8) return std::nullopt;
    auto colors = indexed(direct.pixels.rows(), static_cast<int>(direct.step));
    if (!colors) return std::nullopt;
    const int bits = indexBits(colors->palette.size());
    if (direct.colorType == 0 && bits == 8) return std::nullopt;
    PngLayout layout = packed(direct, colors->indices, bits, 3);
    layout.palette = std::move(colors->palette);
    return layout;
}

// A grey picture in fewer than 8 bits; absent when a value would not survive.
std::optional<PngLayout> narrowGrayLayout(const PngLayout& direct, int bits)
{
    const unsigned step = 255U / ((1U << static_cast<unsigned>(bits)) - 1);
    const auto rows = direct.pixels.rows();
    std::vector<std::uint8_t> values(rows.begin(), rows.end());
    for (std::uint8_t& value : values) {
        if (value % step != 0) return std::nullopt;
        value = static_cast<std::uint8_t>(value / step);
    }
    return packed(direct, values, bits, direct.colorType);
}

std::optional<PngLayout> compactLayout(const PngLayout& direct, const StoredForm& form, bool keepsModel)
{
    if (!keepsModel || form.isIndexed) return paletteLayout(direct);
    const bool isGray = direct.colorType == 0 && direct.bitDepth == 8;
    return isGray && form.bits < 8 ? narrowGrayLayout(direct, form.bits) : std::nullopt;
}

} // namespace

FilterableRows::FilterableRows(std::size_t rowBytes, std::size_t height)
    : m_memory(std::make_unique_for_overwrite<std::uint8_t[]>((rowBytes + 1) * height)), m_room(height),
      m_size((rowBytes + 1) * height)
{
}

Result<PngLayout> pngLayout(VipsImage* image, bool keepsModel)
{
    auto direct = directLayout(image);
    if (!direct) return direct;
    auto compact = compactLayout(*direct, storedForm(image), keepsModel);
    if (compact) return std::move(*compact);
    return direct;
}

} // namespace lumora
