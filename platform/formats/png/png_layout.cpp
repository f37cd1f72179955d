// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_layout.h"

#include "pixels/row_reading.h"
#include "pixels/stored_form.h"
#include "png/transparent_color.h"

#include <vips/vips.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace lumora {
namespace {

constexpr int gray = 0;
constexpr int rgb = 2;
constexpr int grayAndAlpha = 4;
constexpr int rgbAndAlpha = 6;

int colorTypeOf(int bands)
{
    switch (bands) {
    case 1:
        return gray;
    case 2:
        return grayAndAlpha;
    case 3:
        return rgb;
    default:
        return rgbAndAlpha;
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
                     std::move(pixels)};
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
    return {direct.width, direct.height, bits, colorType, rowBytes, 1, std::move(pixels)};
}

// Absent when there are too many colours, or when plain gray is as small.
std::optional<PngLayout> paletteLayout(const PngLayout& direct)
{
    if (direct.bitDepth != 8) return std::nullopt;
    auto colors = indexed(direct.pixels.rows(), static_cast<int>(direct.step));
    if (!colors) return std::nullopt;
    const int bits = indexBits(colors->palette.size());
    if (direct.colorType == gray && bits == 8) return std::nullopt;
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
    PngLayout layout = packed(direct, values, bits, direct.colorType);
    for (const std::uint8_t value : direct.transparentColor)
        layout.transparentColor.push_back(static_cast<std::uint8_t>(value / step));
    return layout;
}

// As the file had it, whose bits a component are not told by the picture.
std::optional<PngLayout> grayLayout(const PngLayout& direct, const StoredForm& form)
{
    const bool isGray = direct.colorType == gray && direct.bitDepth == 8;
    return isGray && form.bits < 8 ? narrowGrayLayout(direct, form.bits) : std::nullopt;
}

// Without alpha; absent when no colour can tell what is transparent.
std::optional<PngLayout> opaqueLayout(const PngLayout& direct)
{
    const auto alphaBytes = static_cast<std::size_t>(direct.bitDepth / 8);
    const std::size_t colorBytes = direct.step - alphaBytes;
    const auto hidden = transparentColor(direct.pixels.rows(), colorBytes, alphaBytes);
    if (!hidden) return std::nullopt;
    const std::size_t rowBytes = direct.width * colorBytes;
    FilterableRows pixels(rowBytes, direct.height);
    auto to = pixels.rows().begin();
    for (auto from = direct.pixels.rows(); !from.empty(); from = from.subspan(direct.step))
        to = std::ranges::copy(from.first(colorBytes), to).out;
    const int colorType = direct.colorType == grayAndAlpha ? gray : rgb;
    return PngLayout{.width = direct.width,
                     .height = direct.height,
                     .bitDepth = direct.bitDepth,
                     .colorType = colorType,
                     .rowBytes = rowBytes,
                     .step = colorBytes,
                     .pixels = std::move(pixels),
                     .transparentColor = {hidden->begin(), hidden->end()}};
}

std::optional<PngLayout> compactLayout(const PngLayout& direct, const StoredForm& form, bool keepsModel)
{
    if (!keepsModel || form.isIndexed) return paletteLayout(direct);
    const bool hasAlpha = direct.colorType == grayAndAlpha || direct.colorType == rgbAndAlpha;
    if (!form.hasTransparentColor || !hasAlpha) return grayLayout(direct, form);
    auto opaque = opaqueLayout(direct);
    if (!opaque) return std::nullopt;
    auto narrow = grayLayout(*opaque, form);
    return narrow ? std::move(narrow) : std::move(opaque);
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
