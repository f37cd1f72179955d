// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/resolution.h"

#include "exiv2_library.h"
#include "metadata_keys.h"

#include <vips/vips.h>

#include <array>
#include <cmath>
#include <cstring>

namespace lumora {
namespace {

constexpr double millimetresInInch = 25.4;

bool isPlausible(const Resolution& resolution)
{
    constexpr double most = 65535; // what a JFIF header can say
    const auto fits = [](double value) { return std::isfinite(value) && value >= 1 && value <= most; };
    return fits(resolution.x) && fits(resolution.y);
}

Resolution densityIn(const ImageProperties& properties, PropertyKey group, std::string_view key)
{
    for (const MetadataEntry& entry : groupOf(properties, group)) {
        std::array<double, 2> dots{};
        if (entry.key != key || entry.bytes.size() != sizeof dots) continue;
        std::memcpy(dots.data(), entry.bytes.data(), sizeof dots);
        return {dots[0], dots[1]};
    }
    return {};
}

Resolution exifResolution(const ImageProperties& properties)
{
    Exiv2::ExifData data;
    for (const MetadataEntry& entry : groupOf(properties, PropertyKey::tiff)) {
        if (entry.key.find("Resolution") != std::string::npos) addEntry(data, entry);
    }
    const auto number = [&](const char* key, double otherwise) {
        const auto found = data.findKey(Exiv2::ExifKey(key));
        return found == data.end() || found->count() == 0 ? otherwise : double{found->toFloat()};
    };
    constexpr double inches = 2;
    constexpr double centimetres = 3;
    const double scale =
        number("Exif.Image.ResolutionUnit", inches) == centimetres ? millimetresInInch / 10 : 1;
    return {number("Exif.Image.XResolution", 0) * scale, number("Exif.Image.YResolution", 0) * scale};
}

} // namespace

void addDensity(ImageProperties& properties, VipsImage* header, std::string_view typeIdentifier)
{
    const bool isPng = typeIdentifier == "public.png";
    // One dot a millimetre is what the library says of a picture that says nothing.
    const std::array<double, 2> perMillimetre{vips_image_get_xres(header), vips_image_get_yres(header)};
    if ((!isPng && typeIdentifier != "public.jpeg") || perMillimetre == std::array{1.0, 1.0}) return;

    const std::array<double, 2> dots{perMillimetre[0] * millimetresInInch,
                                     perMillimetre[1] * millimetresInInch};
    MetadataEntry entry{std::string(isPng ? metadata::pngDensity : metadata::jfifDensity), Exiv2::tiffDouble,
                        std::string(sizeof dots, '\0')};
    std::memcpy(entry.bytes.data(), dots.data(), sizeof dots);
    groupIn(properties, isPng ? PropertyKey::png : PropertyKey::jfif).push_back(std::move(entry));
}

Resolution resolutionOf(const ImageProperties& properties)
{
    for (const Resolution& resolution :
         {densityIn(properties, PropertyKey::png, metadata::pngDensity), exifResolution(properties),
          densityIn(properties, PropertyKey::jfif, metadata::jfifDensity)}) {
        if (isPlausible(resolution)) return resolution;
    }
    return {};
}

} // namespace lumora
