// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What an image file says of itself beside its pixels, read by ImageSource and handed to ImageDestination.
// The seven metadata groups hold single entries so that a group can be dropped on its own; XMP stays one
// packet. A value.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <variant>
#include <vector>

namespace lumora {

enum class PropertyKey {
    exif,                    // MetadataGroup: camera and exposure
    gps,                     // MetadataGroup: position
    tiff,                    // MetadataGroup: make, model, software, dates
    iptc,                    // MetadataGroup: captions, credits
    png,                     // MetadataGroup: text chunks
    jfif,                    // MetadataGroup: density of a JFIF header
    gif,                     // MetadataGroup: comment
    xmp,                     // std::string: the packet
    orientation,             // std::int64_t: 1 to 8, the EXIF numbering
    colorModel,              // std::string: "RGB", "Gray", "CMYK" or "Lab"
    profileName,             // std::string: description of the embedded colour profile
    pixelWidth,              // std::int64_t, as stored
    pixelHeight,             // std::int64_t, as stored
    depth,                   // std::int64_t: bits a component
    lossyCompressionQuality, // double: 0.01 to 1.0, read by ImageDestination only
};

// One metadata field: its key in the naming of the metadata library ("Exif.Photo.ExposureTime"), the field's
// type number there, and its raw little-endian value.
struct MetadataEntry
{
    std::string key;
    std::uint16_t type = 0;
    std::string bytes;

    bool operator==(const MetadataEntry&) const = default;
};

using MetadataGroup = std::vector<MetadataEntry>;
using PropertyValue = std::variant<std::int64_t, double, std::string, MetadataGroup>;
using ImageProperties = std::map<PropertyKey, PropertyValue>;

// One of the seven groups: to read, empty where the file has none; to fill, made where it is missing.
const MetadataGroup& groupOf(const ImageProperties& properties, PropertyKey key);
MetadataGroup& groupIn(ImageProperties& properties, PropertyKey key);

} // namespace lumora
