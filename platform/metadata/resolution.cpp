// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/resolution.h"

#include "exiv2_library.h"

#include <cmath>

namespace lumora {
namespace {

constexpr double centimetresInInch = 2.54;

bool isPlausible(const Resolution& resolution)
{
    constexpr double most = 65535; // what a JFIF header can say
    const auto fits = [](double value) { return std::isfinite(value) && value >= 1 && value <= most; };
    return fits(resolution.x) && fits(resolution.y);
}

Resolution exifResolution(const Metadata& metadata)
try {
    Exiv2::ExifData data;
    for (const MetadataField& field : metadata.tiff) {
        if (field.key.find("Resolution") != std::string::npos) addIfSound(data, field);
    }
    const auto number = [&](const char* key, double otherwise) {
        const auto found = data.findKey(Exiv2::ExifKey(key));
        return found == data.end() || found->count() == 0 ? otherwise : double{found->toFloat()};
    };
    constexpr double inches = 2;
    constexpr double centimetres = 3;
    const double scale = number("Exif.Image.ResolutionUnit", inches) == centimetres ? centimetresInInch : 1;
    return {number("Exif.Image.XResolution", 0) * scale, number("Exif.Image.YResolution", 0) * scale};
} catch (const Exiv2::Error&) {
    return {};
}

} // namespace

Resolution resolutionOf(const Metadata& metadata)
{
    for (const Resolution& resolution :
         {metadata.pngDensity, exifResolution(metadata), metadata.jfifDensity}) {
        if (isPlausible(resolution)) return resolution;
    }
    return {};
}

} // namespace lumora
