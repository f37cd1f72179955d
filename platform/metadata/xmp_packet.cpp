// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmp_packet.h"

#include "exiv2_library.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace lumora {
namespace {

using namespace std::string_view_literals;

constexpr auto tiffSchema = "http://ns.adobe.com/tiff/1.0/"sv;
constexpr auto exifSchema = "http://ns.adobe.com/exif/1.0/"sv;
constexpr auto photoshopSchema = "http://ns.adobe.com/photoshop/1.0/"sv;

// Schemas, by the beginning of their address, that speak only of data beside the picture: gain maps, further
// items of the file, depth, mattes, sound.
constexpr std::array foreignSchemas{
    "http://ns.adobe.com/hdr-gain-map/"sv,
    "http://ns.apple.com/HDRGainMap/"sv,
    "http://ns.apple.com/HDRToneMap/"sv,
    "http://ns.apple.com/pixeldatainfo/"sv,
    "http://ns.apple.com/depthData/"sv,
    "http://ns.apple.com/depthBlurEffect/"sv,
    "http://ns.apple.com/portraitEffectsMatte/"sv,
    "http://ns.apple.com/semanticSegmentationMatte/"sv,
    "http://ns.google.com/photos/1.0/container/"sv,
    "http://ns.google.com/photos/1.0/image/"sv,
    "http://ns.google.com/photos/1.0/depthmap/"sv,
    "http://ns.google.com/photos/1.0/audio/"sv,
    "http://ns.google.com/photos/dd/"sv,
};

// Schemas are told apart by their address: a packet chooses the short names itself.
struct Property
{
    std::string_view schema;
    std::string_view name; // the beginning of the property's name
};

constexpr std::array foreignProperties{
    Property{"http://ns.google.com/photos/1.0/camera/", "MicroVideo"},
    Property{"http://ns.google.com/photos/1.0/camera/", "MotionPhoto"},
    Property{"http://ns.adobe.com/xmp/note/", "HasExtendedXMP"},
    Property{"http://ns.adobe.com/xap/1.0/", "Thumbnails"},
    Property{"http://purl.org/dc/elements/1.1/", "format"},
    Property{photoshopSchema, "ColorMode"},
    Property{tiffSchema, "BitsPerSample"},
    Property{tiffSchema, "Compression"},
    Property{tiffSchema, "PhotometricInterpretation"},
    Property{tiffSchema, "SamplesPerPixel"},
    Property{tiffSchema, "PlanarConfiguration"},
    Property{tiffSchema, "YCbCr"},
    Property{tiffSchema, "NativeDigest"},
    Property{exifSchema, "NativeDigest"},
};

bool isForeign(const std::string& schema, const Exiv2::Xmpdatum& datum, const PictureFacts& facts)
{
    const std::string name = datum.tagName();
    if (schema == photoshopSchema && name == "ICCProfile")
        return facts.profileName.empty() || datum.toString() != facts.profileName;
    return std::ranges::any_of(foreignSchemas, [&](auto start) { return schema.starts_with(start); }) ||
           std::ranges::any_of(foreignProperties, [&](const Property& property) {
               return schema == property.schema && name.starts_with(property.name);
           });
}

bool removeForeign(Exiv2::XmpData& data, const PictureFacts& facts)
{
    bool changed = false;
    for (auto datum = data.begin(); datum != data.end();) {
        const bool goes = isForeign(Exiv2::XmpProperties::ns(datum->groupName()), *datum, facts);
        datum = goes ? data.erase(datum) : std::next(datum);
        changed = changed || goes;
    }
    return changed;
}

bool setIfPresent(Exiv2::XmpData& data, const char* key, std::int64_t value)
{
    const auto found = data.findKey(Exiv2::XmpKey(key));
    const std::string text = std::to_string(value);
    if (found == data.end() || found->toString() == text) return false;
    found->setValue(text);
    return true;
}

bool update(Exiv2::XmpData& data, const PictureFacts& facts)
{
    constexpr int normal = 1;
    bool changed = removeForeign(data, facts);
    changed = setIfPresent(data, "Xmp.tiff.Orientation", normal) || changed;
    changed = setIfPresent(data, "Xmp.tiff.ImageWidth", facts.width) || changed;
    changed = setIfPresent(data, "Xmp.tiff.ImageLength", facts.height) || changed;
    changed = setIfPresent(data, "Xmp.exif.PixelXDimension", facts.width) || changed;
    changed = setIfPresent(data, "Xmp.exif.PixelYDimension", facts.height) || changed;
    return setIfPresent(data, "Xmp.exif.ColorSpace", exifColorSpace(facts)) || changed;
}

std::string withoutPadding(std::string packet)
{
    const std::size_t trailer = packet.rfind("<?xpacket end");
    if (trailer == std::string::npos || trailer == 0) return packet;
    const std::size_t last = packet.find_last_not_of(" \t\r\n", trailer - 1);
    if (last != std::string::npos) packet.erase(last + 1, trailer - last - 1);
    return packet;
}

} // namespace

std::string updatedXmpPacket(const std::string& packet, const PictureFacts& facts)
{
    Exiv2::XmpData data;
    if (Exiv2::XmpParser::decode(data, packet) != 0) return {};
    const bool changed = update(data, facts);
    if (data.empty()) return {};
    if (!changed) return withoutPadding(packet);
    std::string updated;
    if (Exiv2::XmpParser::encode(updated, data, Exiv2::XmpParser::useCompactFormat) != 0) return {};
    return withoutPadding(updated);
}

} // namespace lumora
