// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_layout.h"

#include <algorithm>
#include <array>
#include <limits>

namespace lumora {
namespace {

constexpr int mostSamples = 64;

std::optional<TiffSample> sampleOf(const TiffFile& file)
{
    switch (file.number(TIFFTAG_SAMPLEFORMAT, SAMPLEFORMAT_UINT)) {
    case SAMPLEFORMAT_UINT:
    case SAMPLEFORMAT_VOID:
        return TiffSample::natural;
    case SAMPLEFORMAT_INT:
        return TiffSample::integer;
    case SAMPLEFORMAT_IEEEFP:
        return TiffSample::real;
    default:
        return std::nullopt;
    }
}

bool isReadable(TiffSample sample, int bits)
{
    const std::array realBits{16, 24, 32, 64};
    if (sample == TiffSample::real) return std::ranges::find(realBits, bits) != realBits.end();
    const bool isPacked = bits <= 16;
    return bits >= 1 && (isPacked || bits == 24 || bits == 32 || bits == 64);
}

std::uint16_t photometricOf(const TiffFile& file, int colorSamples)
{
    return file.number(TIFFTAG_PHOTOMETRIC, colorSamples >= 3 ? PHOTOMETRIC_RGB : PHOTOMETRIC_MINISBLACK);
}

// What is left to a decoder of colours that are no plain components.
std::optional<TiffRoad> roadOfColors(const TiffFile& file)
{
    std::array<char, 1024> reason{};
    return TIFFRGBAImageOK(file.get(), reason.data()) == 1 ? std::optional(TiffRoad::colors) : std::nullopt;
}

bool isCmyk(const TiffFile& file)
{
    return file.number(TIFFTAG_INKSET, INKSET_CMYK) == INKSET_CMYK;
}

// The colours of a pixel that is stored as plain components; 0 for another one.
int colorsOf(const TiffFile& file, std::uint16_t photometric)
{
    switch (photometric) {
    case PHOTOMETRIC_MINISBLACK:
    case PHOTOMETRIC_MINISWHITE:
    case PHOTOMETRIC_PALETTE:
        return 1;
    case PHOTOMETRIC_RGB:
        return 3;
    case PHOTOMETRIC_SEPARATED:
        return isCmyk(file) ? 4 : 0;
    default:
        return 0;
    }
}

std::optional<TiffRoad> roadOf(const TiffFile& file, const TiffLayout& layout, std::uint16_t photometric)
{
    const std::uint16_t compression = file.number(TIFFTAG_COMPRESSION, COMPRESSION_NONE);
    const bool isNatural = layout.sample == TiffSample::natural;
    if (photometric == PHOTOMETRIC_CIELAB) {
        const bool isReal = layout.sample == TiffSample::real && layout.bits == 32;
        const bool isKnown = layout.samples == 3 && (isReal || layout.bits == 8 || layout.bits == 16);
        return isKnown ? std::optional(TiffRoad::library) : std::nullopt;
    }
    const bool isJpeg = compression == COMPRESSION_JPEG && !layout.isPlanar && layout.bits == 8;
    const bool isYcc = photometric == PHOTOMETRIC_YCBCR;
    if (isYcc && isJpeg && layout.samples == 3) return TiffRoad::samples;
    const bool isLogarithmic = photometric == PHOTOMETRIC_LOGL || photometric == PHOTOMETRIC_LOGLUV;
    if (isLogarithmic || (isNatural && (isYcc || compression == COMPRESSION_OJPEG)))
        return roadOfColors(file);
    if (layout.colors == 0 || layout.samples < layout.colors || !isReadable(layout.sample, layout.bits))
        return std::nullopt;
    return TiffRoad::samples;
}

} // namespace

std::optional<TiffLayout> tiffLayout(const TiffFile& file)
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    TIFFGetField(file.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(file.get(), TIFFTAG_IMAGELENGTH, &height);
    constexpr std::uint32_t longest = std::numeric_limits<int>::max();
    const auto sample = sampleOf(file);
    const int samples = file.number(TIFFTAG_SAMPLESPERPIXEL, 1);
    if (!sample || width < 1 || height < 1 || width > longest || height > longest || samples > mostSamples)
        return std::nullopt;

    std::uint16_t extras = 0;
    const std::uint16_t* kinds = nullptr;
    TIFFGetFieldDefaulted(file.get(), TIFFTAG_EXTRASAMPLES, &extras, &kinds);
    const std::uint16_t photometric = photometricOf(file, samples - extras);
    TiffLayout layout{};
    layout.width = static_cast<int>(width);
    layout.height = static_cast<int>(height);
    layout.bits = file.number(TIFFTAG_BITSPERSAMPLE, 1);
    layout.sample = *sample;
    layout.samples = samples;
    layout.colors = photometric == PHOTOMETRIC_YCBCR ? 3 : colorsOf(file, photometric);
    layout.isPlanar = samples > 1 && file.number(TIFFTAG_PLANARCONFIG) == PLANARCONFIG_SEPARATE;
    layout.isTiled = TIFFIsTiled(file.get()) != 0;
    layout.hasPalette = photometric == PHOTOMETRIC_PALETTE;
    layout.isInverted = photometric == PHOTOMETRIC_MINISWHITE;
    layout.isPremultiplied = extras > 0 && kinds && *kinds == EXTRASAMPLE_ASSOCALPHA &&
                             samples > layout.colors && layout.colors != 4 && !layout.hasPalette;
    if (layout.hasPalette && (layout.bits > 16 || layout.sample != TiffSample::natural)) return std::nullopt;
    const auto road = roadOf(file, layout, photometric);
    if (!road) return std::nullopt;
    layout.road = *road;
    return layout;
}

} // namespace lumora
