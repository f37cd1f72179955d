// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "xmp_packet.h"

#include "exiv2_library.h"
#include "xmp_effort.h"
#include "xmp_split.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

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
    const auto goes = [&](const Exiv2::Xmpdatum& datum) {
        return isForeign(Exiv2::XmpProperties::ns(datum.groupName()), datum, facts);
    };
    if (std::none_of(data.begin(), data.end(), goes)) return false;
    Exiv2::XmpData kept; // taking single ones out of a set moves all that follow
    for (const auto& datum : data) {
        if (!goes(datum)) kept.add(datum);
    }
    data = std::move(kept);
    return true;
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

bool decode(Exiv2::XmpData& data, const std::string& packet)
{
    return isReasonableXmp(packet) && Exiv2::XmpParser::decode(data, packet) == 0;
}

std::string encoded(const Exiv2::XmpData& data, bool isExtension = false)
{
    using Parser = Exiv2::XmpParser;
    const int wrapper = isExtension ? Parser::omitPacketWrapper : 0;
    std::string packet;
    if (Parser::encode(packet, data, static_cast<std::uint16_t>(Parser::useCompactFormat | wrapper)) != 0)
        return {};
    return withoutPadding(packet);
}

bool addExtension(Exiv2::XmpData& data, const std::string& extension)
{
    Exiv2::XmpData more;
    if (extension.empty() || !decode(more, extension)) return false;
    for (const auto& datum : more)
        data.add(datum);
    return true;
}

} // namespace

bool speaksOfOtherDataOnly(const std::string& packet)
try {
    ensureExiv2Ready();
    Exiv2::XmpData data;
    if (!decode(data, packet)) return false;
    removeForeign(data, {});
    return data.empty();
} catch (const Exiv2::Error&) {
    return false;
}

SplitXmp updatedXmp(const SplitXmp& xmp, const PictureFacts& facts, std::size_t longest)
{
    Exiv2::XmpData data;
    if (!decode(data, xmp.packet)) return {};
    const bool isExtended = addExtension(data, xmp.extension);
    const bool changed = update(data, facts);
    if (data.empty()) return {};
    std::string packet = changed || isExtended ? encoded(data) : withoutPadding(xmp.packet);
    if (packet.size() <= longest) return {std::move(packet)};
    return split(data, longest, encoded);
}

} // namespace lumora
