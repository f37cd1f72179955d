// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A PNG writer of our own, because the size of the file is what people come for: the exact colours go into a
// palette when they are few, both filtering strategies are tried, and libdeflate compresses better than zlib
// in less time.
#include "png/png_encoder.h"

#include "encoded_bytes.h"
#include "indexed_pixels.h"
#include "pixels/stored_form.h"
#include "png/png_chunks.h"
#include "png/png_filter.h"
#include "png/png_metadata.h"

#include <algorithm>
#include <optional>
#include <span>
#include <string>

namespace lumora {
namespace {

using namespace std::string_view_literals;

// Above this only the strategy that suits photographs is tried.
constexpr std::size_t largeData = std::size_t{1} << 25U;

// One way to lay the pixels down.
struct Layout
{
    std::size_t width;
    std::size_t height;
    int bitDepth;
    int colorType; // 0 gray, 2 RGB, 3 palette, 4 gray and alpha, 6 RGB and alpha
    std::size_t rowBytes;
    std::size_t step; // bytes of a whole pixel, at least 1
    std::vector<std::uint8_t> rows;
    std::vector<PaletteColor> palette;
};

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

Layout directLayout(VipsImage* image, std::vector<std::uint8_t> rows)
{
    const bool isDeep = vips_image_get_format(image) == VIPS_FORMAT_USHORT;
    const int bands = vips_image_get_bands(image);
    const auto width = static_cast<std::size_t>(vips_image_get_width(image));
    const std::size_t step = static_cast<std::size_t>(bands) * (isDeep ? 2 : 1);
    if (isDeep) { // most significant byte first
        for (std::size_t i = 0; i + 1 < rows.size(); i += 2)
            std::swap(rows[i], rows[i + 1]);
    }
    return {width,           static_cast<std::size_t>(vips_image_get_height(image)),
            isDeep ? 16 : 8, colorTypeOf(bands),
            width * step,    step,
            std::move(rows), {}};
}

int indexBits(std::size_t colors)
{
    return colors <= 2 ? 1 : colors <= 4 ? 2 : colors <= 16 ? 4 : 8;
}

std::vector<std::uint8_t> packedIndices(const std::vector<std::uint8_t>& indices, std::size_t width,
                                        std::size_t height, int bits)
{
    const std::size_t perByte = 8 / static_cast<std::size_t>(bits);
    const std::size_t rowBytes = (width + perByte - 1) / perByte;
    std::vector<std::uint8_t> rows(rowBytes * height);
    for (std::size_t y = 0; y < height; ++y) {
        for (std::size_t x = 0; x < width; ++x) {
            const auto shift = static_cast<unsigned>(8 - bits * static_cast<int>(x % perByte + 1));
            auto& byte = rows[y * rowBytes + x / perByte];
            byte = static_cast<std::uint8_t>(byte | indices[y * width + x] << shift);
        }
    }
    return rows;
}

// Absent when there are too many colours, or when plain gray is as small.
std::optional<Layout> paletteLayout(const Layout& direct)
{
    if (direct.bitDepth != 8) return std::nullopt;
    auto colors = indexed(direct.rows, static_cast<int>(direct.step));
    if (!colors) return std::nullopt;
    const int bits = indexBits(colors->palette.size());
    if (direct.colorType == 0 && bits == 8) return std::nullopt;
    auto rows = packedIndices(colors->indices, direct.width, direct.height, bits);
    const std::size_t rowBytes = rows.size() / direct.height;
    return Layout{
        direct.width, direct.height, bits, 3, rowBytes, 1, std::move(rows), std::move(colors->palette)};
}

// A grey picture in fewer than 8 bits; absent when a value would not survive.
std::optional<Layout> narrowGrayLayout(const Layout& direct, int bits)
{
    const unsigned step = 255U / ((1U << static_cast<unsigned>(bits)) - 1);
    std::vector<std::uint8_t> values = direct.rows;
    for (std::uint8_t& value : values) {
        if (value % step != 0) return std::nullopt;
        value = static_cast<std::uint8_t>(value / step);
    }
    auto rows = packedIndices(values, direct.width, direct.height, bits);
    const std::size_t rowBytes = rows.size() / direct.height;
    return Layout{direct.width, direct.height, bits, direct.colorType, rowBytes, 1, std::move(rows), {}};
}

// Redrawn pictures take the smaller form, others the form that they had.
std::optional<Layout> compactLayout(const Layout& direct, const StoredForm& form, bool keepsModel)
{
    if (!keepsModel || form.isIndexed) return paletteLayout(direct);
    const bool isGray = direct.colorType == 0 && direct.bitDepth == 8;
    return isGray && form.bits < 8 ? narrowGrayLayout(direct, form.bits) : std::nullopt;
}

std::string compressed(const Layout& layout, RowFilters filters)
{
    const auto bytes = filtered(layout.rows, layout.rowBytes, layout.step, filters);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as characters
    return deflated({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
}

std::string smallestData(const Layout& layout)
{
    std::string best = compressed(layout, RowFilters::adaptive);
    if (layout.rows.size() > largeData) return best;
    const auto attempt = [&](RowFilters filters) {
        std::string data = compressed(layout, filters);
        if (data.size() < best.size()) best = std::move(data);
    };
    attempt(RowFilters::none);
    // Sums of differences between indices mislead where a picture's colours are many.
    if (!layout.palette.empty() && layout.bitDepth == 8) attempt(RowFilters::paeth);
    return best;
}

void appendPalette(Bytes& png, const std::vector<PaletteColor>& palette)
{
    std::string colors;
    std::string alphas;
    for (const PaletteColor& c : palette) {
        for (const std::uint8_t component : {c.red, c.green, c.blue})
            colors += static_cast<char>(component);
        if (c.alpha != 255) alphas += static_cast<char>(c.alpha);
    }
    appendChunk(png, "PLTE", colors);
    if (!alphas.empty()) appendChunk(png, "tRNS", alphas);
}

Bytes fileOf(const Layout& layout, const EncodeRequest& request)
{
    const auto signature = std::as_bytes(std::span("\x89PNG\r\n\x1A\n"sv));
    Bytes png(signature.begin(), signature.end());
    std::string header = bigEndian(layout.width) + bigEndian(layout.height);
    header += static_cast<char>(layout.bitDepth);
    header += static_cast<char>(layout.colorType);
    header += "\0\0\0"sv; // deflate, five filters, not interlaced
    appendChunk(png, "IHDR", header);
    const std::string_view profile = blobOf(request.image, VIPS_META_ICC_NAME);
    if (!profile.empty()) appendChunk(png, "iCCP", std::string("ICC profile\0\0"sv) + deflated(profile));
    if (!layout.palette.empty()) appendPalette(png, layout.palette);
    appendPngMetadata(png, request.metadata, request.facts);
    appendChunk(png, "IDAT", smallestData(layout));
    appendChunk(png, "IEND", {});
    return png;
}

} // namespace

Result<Bytes> encodePng(const EncodeRequest& request)
{
    std::vector<std::uint8_t> rows;
    {
        const auto components = componentsOf(request.image);
        if (!components) return components.error();
        rows.assign(components->bytes().begin(), components->bytes().end());
    }
    const Layout direct = directLayout(request.image, std::move(rows));
    const auto compact = compactLayout(direct, storedForm(request.image), request.keepsModel);
    return fileOf(compact ? *compact : direct, request);
}

} // namespace lumora
