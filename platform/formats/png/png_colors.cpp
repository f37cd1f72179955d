// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_colors.h"

#include "metadata/png_chunk_reader.h"
#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "pixels/described_colors.h"

#include <vips/vips.h>

#include <unistd.h>

#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace lumora {
namespace {

using Numbers = std::vector<std::uint32_t>;

struct ColorChunks
{
    std::optional<std::array<std::uint8_t, 4>> codes; // cICP
    bool saysSrgb = false;
    std::optional<Numbers> gamma;          // one, in 100000ths
    std::optional<Numbers> chromaticities; // x and y of white, red, green and blue, in 100000ths
};

std::optional<Numbers> numbersIn(const PngChunk& chunk, int descriptor, std::size_t count)
{
    std::vector<std::uint8_t> bytes(count * 4);
    if (chunk.length != bytes.size() || pread(descriptor, bytes.data(), bytes.size(),
                                              static_cast<off_t>(chunk.dataAt)) != ssize_t(bytes.size()))
        return std::nullopt;
    Numbers numbers(count);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        numbers[i / 4] = numbers[i / 4] << 8U | bytes[i];
    return numbers;
}

std::optional<std::array<std::uint8_t, 4>> codesIn(const PngChunk& chunk, int descriptor)
{
    std::array<std::uint8_t, 4> codes{};
    if (chunk.length != codes.size() || pread(descriptor, codes.data(), codes.size(),
                                              static_cast<off_t>(chunk.dataAt)) != ssize_t(codes.size()))
        return std::nullopt;
    return codes;
}

ColorChunks chunksOf(int descriptor)
{
    ColorChunks chunks;
    std::size_t at = firstPngChunk;
    for (auto chunk = pngChunkAt(descriptor, at); chunk; chunk = pngChunkAt(descriptor, at)) {
        if (chunk->type == "IDAT" || chunk->type == "PLTE") break;
        if (chunk->type == "cICP") chunks.codes = codesIn(*chunk, descriptor);
        if (chunk->type == "sRGB") chunks.saysSrgb = true;
        if (chunk->type == "gAMA") chunks.gamma = numbersIn(*chunk, descriptor, 1);
        if (chunk->type == "cHRM") chunks.chromaticities = numbersIn(*chunk, descriptor, 8);
        at = chunk->end();
    }
    return chunks;
}

std::optional<ColorDescription> colorsOfCodesIn(const ColorChunks& chunks)
{
    // Neither differences of colours nor the narrow range of television is what the decoder hands on.
    constexpr std::uint8_t asRgb = 0;
    constexpr std::uint8_t fullRange = 1;
    if (!chunks.codes) return std::nullopt;
    const auto& [primaries, transfer, matrix, range] = *chunks.codes;
    if (matrix != asRgb || range != fullRange) return std::nullopt;
    return colorsOfCodes(primaries, transfer);
}

Primaries primariesOf(const Numbers& numbers)
{
    const auto pair = [&](std::size_t i) {
        constexpr double unit = 100000;
        return Chromaticity{numbers[i] / unit, numbers[i + 1] / unit};
    };
    return {pair(0), pair(2), pair(4), pair(6)};
}

std::optional<ColorDescription> colorsOfNumbersIn(const ColorChunks& chunks)
{
    if (chunks.saysSrgb || (!chunks.gamma && !chunks.chromaticities)) return std::nullopt;
    const Primaries primaries = chunks.chromaticities ? primariesOf(*chunks.chromaticities) : srgbPrimaries;
    if (!chunks.gamma) return ColorDescription{.primaries = primaries};
    return colorsOfPower(primaries, 100000.0 / chunks.gamma->front());
}

bool hasProfile(VipsImage* image)
{
    const ProfileBytes profile = attachedProfile(image);
    return describes(profile, ColorModel::rgb) || describes(profile, ColorModel::gray);
}

} // namespace

VipsImagePtr withPngColors(VipsImagePtr image, int descriptor)
{
    const ColorChunks chunks = chunksOf(descriptor);
    if (const auto colors = colorsOfCodesIn(chunks)) return withColors(std::move(image), *colors);
    if (hasProfile(image.get())) return image;
    if (const auto colors = colorsOfNumbersIn(chunks)) return withColors(std::move(image), *colors);
    return image;
}

} // namespace lumora
