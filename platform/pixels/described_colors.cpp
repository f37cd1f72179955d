// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/described_colors.h"

#include "color_library.h"
#include "pixels/color_conversion.h"

#include <lcms2.h>
#include <vips/vips.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace lumora {
namespace {

struct CurveFree
{
    void operator()(cmsToneCurve* curve) const { cmsFreeToneCurve(curve); }
};
using Curve = std::unique_ptr<cmsToneCurve, CurveFree>;

// Relative to the white of an ordinary picture, as ITU-R BT.2408 places it among brighter light.
constexpr double whiteNits = 203;

// ITU-R BT.2100, table 4.
double quantizedLight(double signal)
{
    const double power = std::pow(signal, 1 / 78.84375);
    const double part = std::max(power - 0.8359375, 0.0) / (18.8515625 - 18.6875 * power);
    return 10000 / whiteNits * std::pow(part, 1 / 0.1593017578125);
}

// ITU-R BT.2100, table 5, on its screen of 1000 nits.
double hybridLight(double signal)
{
    const double scene = signal <= 0.5 ? signal * signal / 3
                                       : (std::exp((signal - 0.55991073) / 0.17883277) + 0.28466892) / 12;
    return 1000 / whiteNits * std::pow(scene, 1.2);
}

double belowWhite(double light)
{
    constexpr double knee = 0.6;
    constexpr double rest = 1 - knee;
    return light <= knee ? light : knee + rest * (1 - std::exp((knee - light) / rest));
}

Curve curveOfBrightLight(double (*lightOf)(double))
{
    constexpr std::size_t steps = 4096;
    std::vector<cmsUInt16Number> table(steps);
    for (std::size_t i = 0; i < steps; ++i) {
        const double light = belowWhite(lightOf(static_cast<double>(i) / (steps - 1)));
        table[i] = static_cast<cmsUInt16Number>(std::lround(65535 * light));
    }
    return Curve(cmsBuildTabulatedToneCurve16(nullptr, steps, table.data()));
}

Curve curveOf(const ColorDescription& colors)
{
    constexpr cmsInt32Number linearBelow = 4; // the parametric curve with a straight start
    constexpr std::array<cmsFloat64Number, 5> srgb{2.4, 1 / 1.055, 0.055 / 1.055, 1 / 12.92, 0.04045};
    switch (colors.transfer) {
    case Transfer::power:
        return Curve(cmsBuildGamma(nullptr, colors.exponent));
    case Transfer::perceptualQuantizer:
        return curveOfBrightLight(quantizedLight);
    case Transfer::hybridLogGamma:
        return curveOfBrightLight(hybridLight);
    case Transfer::srgb:
        break;
    }
    return Curve(cmsBuildParametricToneCurve(nullptr, linearBelow, srgb.data()));
}

// Twice the area that the three span, positive when they run as colours do.
double spannedBy(const Chromaticity& a, const Chromaticity& b, const Chromaticity& c)
{
    return (b.x - a.x) * (c.y - a.y) - (c.x - a.x) * (b.y - a.y);
}

bool isSensible(const Primaries& primaries)
{
    constexpr double smallest = 0.01;
    const auto& [white, red, green, blue] = primaries;
    const bool areColors =
        std::ranges::all_of(std::array{white, red, green, blue},
                            [](const Chromaticity& c) { return c.x >= 0 && c.y >= 0 && c.x + c.y <= 1.001; });
    return areColors && spannedBy(red, green, white) > smallest && spannedBy(green, blue, white) > smallest &&
           spannedBy(blue, red, white) > smallest;
}

bool isSensible(const ColorDescription& colors)
{
    constexpr double steepest = 10;
    const bool hasCurve = colors.transfer != Transfer::power ||
                          (colors.exponent >= 1 / steepest && colors.exponent <= steepest);
    return hasCurve && isSensible(colors.primaries);
}

bool areSrgb(const Primaries& primaries)
{
    const auto isNear = [](const Chromaticity& a, const Chromaticity& b) {
        constexpr double rounding = 0.002;
        return std::abs(a.x - b.x) < rounding && std::abs(a.y - b.y) < rounding;
    };
    return isNear(primaries.white, srgbPrimaries.white) && isNear(primaries.red, srgbPrimaries.red) &&
           isNear(primaries.green, srgbPrimaries.green) && isNear(primaries.blue, srgbPrimaries.blue);
}

OwnedProfile madeProfile(const ColorDescription& colors, ColorModel model)
{
    const auto& [white, red, green, blue] = colors.primaries;
    const cmsCIExyY whitePoint{white.x, white.y, 1};
    const Curve curve = curveOf(colors);
    if (model == ColorModel::gray) return OwnedProfile(cmsCreateGrayProfile(&whitePoint, curve.get()));
    const cmsCIExyYTRIPLE corners{{red.x, red.y, 1}, {green.x, green.y, 1}, {blue.x, blue.y, 1}};
    const std::array<cmsToneCurve*, 3> curves{curve.get(), curve.get(), curve.get()};
    return OwnedProfile(cmsCreateRGBProfile(&whitePoint, &corners, curves.data()));
}

void describe(void* profile)
{
    cmsMLU* const words = cmsMLUalloc(nullptr, 1);
    cmsMLUsetASCII(words, "en", "US", "Colours as the picture described them");
    cmsWriteTag(profile, cmsSigProfileDescriptionTag, words);
    cmsMLUfree(words);
}

ColorModel modelOf(const VipsImage* image)
{
    return vips_image_get_bands(image) <= 2 ? ColorModel::gray : ColorModel::rgb;
}

void attach(VipsImage* image, ProfileBytes profile)
{
    if (!profile.empty()) vips_image_set_blob_copy(image, VIPS_META_ICC_NAME, profile.data(), profile.size());
}

std::optional<Primaries> primariesOfCode(unsigned code)
{
    constexpr Chromaticity daylight{0.3127, 0.3290};
    constexpr Chromaticity illuminantC{0.310, 0.316};
    switch (code) {
    case 1:
    case 2:
        return srgbPrimaries;
    case 4:
        return Primaries{illuminantC, {0.67, 0.33}, {0.21, 0.71}, {0.14, 0.08}};
    case 5:
        return Primaries{daylight, {0.64, 0.33}, {0.29, 0.60}, {0.15, 0.06}};
    case 6:
    case 7:
        return Primaries{daylight, {0.630, 0.340}, {0.310, 0.595}, {0.155, 0.070}};
    case 8:
        return Primaries{illuminantC, {0.681, 0.319}, {0.243, 0.692}, {0.145, 0.049}};
    case 9:
        return Primaries{daylight, {0.708, 0.292}, {0.170, 0.797}, {0.131, 0.046}};
    case 11:
        return Primaries{{0.314, 0.351}, {0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}};
    case 12:
        return Primaries{daylight, {0.680, 0.320}, {0.265, 0.690}, {0.150, 0.060}};
    case 22:
        return Primaries{daylight, {0.630, 0.340}, {0.295, 0.605}, {0.155, 0.077}};
    default:
        return std::nullopt;
    }
}

} // namespace

ColorDescription colorsOfPower(const Primaries& primaries, double exponent)
{
    const bool meansSrgb = std::abs(exponent - 2.2) < 0.04 && areSrgb(primaries);
    return {primaries, meansSrgb ? Transfer::srgb : Transfer::power, exponent};
}

std::optional<ColorDescription> colorsOfCodes(unsigned primaries, unsigned transfer)
{
    const auto corners = primariesOfCode(primaries);
    if (!corners) return std::nullopt;
    switch (transfer) {
    case 1:
    case 2:
    case 6:
    case 7:
    case 11:
    case 12:
    case 13:
    case 14:
    case 15:
        return ColorDescription{*corners, Transfer::srgb};
    case 4:
        return ColorDescription{*corners, Transfer::power, 2.2};
    case 5:
        return ColorDescription{*corners, Transfer::power, 2.8};
    case 8:
        return ColorDescription{*corners, Transfer::power, 1.0};
    case 16:
        return ColorDescription{*corners, Transfer::perceptualQuantizer};
    case 17:
        return ColorDescription{*corners, Transfer::power, 2.6};
    case 18:
        return ColorDescription{*corners, Transfer::hybridLogGamma};
    default:
        return std::nullopt;
    }
}

std::optional<std::vector<std::uint8_t>> profileOf(const ColorDescription& colors, ColorModel model)
{
    if (!isSensible(colors)) return std::nullopt;
    const OwnedProfile profile = madeProfile(colors, model);
    if (!profile) return std::nullopt;
    describe(profile.get());
    std::vector<std::uint8_t> bytes = savedProfile(profile.get());
    if (bytes.empty()) return std::nullopt;
    if (ColorConversion::toSrgb({model, false}, bytes).isIdentity()) bytes.clear();
    return bytes;
}

VipsImagePtr withColors(VipsImagePtr image, const ColorDescription& colors)
{
    const auto profile = profileOf(colors, modelOf(image.get()));
    VipsImage* copy = nullptr;
    // Of a picture whose decoder has yet to start the own fields would come back.
    if (!profile || vips_copy(image.get(), &copy, nullptr) != 0) return image;
    vips_image_remove(copy, VIPS_META_ICC_NAME);
    attach(copy, *profile);
    return VipsImagePtr(copy);
}

void attachColors(VipsImage* image, const ColorDescription& colors)
{
    if (const auto profile = profileOf(colors, modelOf(image))) attach(image, *profile);
}

} // namespace lumora
