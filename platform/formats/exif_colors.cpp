// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "exif_colors.h"

#include "pixels/color_profile.h"
#include "pixels/described_colors.h"
#include "system/file_bytes.h"

#include <vips/vips.h>

#include <array>
#include <string_view>
#include <vector>

namespace lumora {
namespace {

using namespace std::string_view_literals;

std::string_view valueOf(const MetadataFields& fields, std::string_view key)
{
    for (const MetadataField& field : fields) {
        if (field.key == key) return field.bytes;
    }
    return {};
}

// So many pairs of fractions; empty for anything else.
std::vector<Chromaticity> chromaticitiesIn(std::string_view bytes, std::size_t count)
{
    constexpr std::size_t fraction = 8;
    if (bytes.size() != count * 2 * fraction) return {};
    const auto value = [&](std::size_t at) {
        return static_cast<double>(littleEndianAt(bytes, at, 4)) /
               static_cast<double>(littleEndianAt(bytes, at + 4, 4));
    };
    std::vector<Chromaticity> pairs;
    for (std::size_t at = 0; at < bytes.size(); at += 2 * fraction)
        pairs.push_back({value(at), value(at + fraction)});
    return pairs;
}

} // namespace

void attachCameraColors(VipsImage* image, const Metadata& metadata)
{
    const auto index = valueOf(metadata.exif, "Exif.Iop.InteroperabilityIndex");
    const auto space = valueOf(metadata.exif, "Exif.Photo.ColorSpace");
    if (index.starts_with("R03"sv) && space == "\xFF\xFF"sv && attachedProfile(image).empty())
        attachColors(image, {adobeRgbPrimaries, Transfer::power, 2.19921875});
}

void attachTiffColors(VipsImage* image, const Metadata& metadata)
{
    const auto white = chromaticitiesIn(valueOf(metadata.tiff, "Exif.Image.WhitePoint"), 1);
    const auto colors = chromaticitiesIn(valueOf(metadata.tiff, "Exif.Image.PrimaryChromaticities"), 3);
    if (white.empty() || colors.empty() || !attachedProfile(image).empty()) return;
    attachColors(image, colorsOfPower({white[0], colors[0], colors[1], colors[2]}, 2.2));
}

} // namespace lumora
