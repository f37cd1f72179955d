// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What an image file says beside its pixels. One record serves both ways: the reader of each format fills
// what its container holds, the writer of each format takes out what its container can hold. A value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

// One field: its key in the naming of the metadata library ("Exif.Photo.ExposureTime"), the field's type
// number there, and its raw little-endian value.
struct MetadataField
{
    std::string key;
    std::uint16_t type = 0;
    std::string bytes;

    bool operator==(const MetadataField&) const = default;
};

using MetadataFields = std::vector<MetadataField>;

// Dots an inch; zero where nothing tells.
struct Resolution
{
    double x = 0;
    double y = 0;

    bool isKnown() const { return x > 0 && y > 0; }
    bool operator==(const Resolution&) const = default;
};

struct PngText
{
    std::string keyword; // Latin-1, 1 to 79 bytes
    std::string text;    // UTF-8

    bool operator==(const PngText&) const = default;
};

// The parts that can be left out on their own.
enum class MetadataGroup {
    exif, // camera and exposure
    gps,  // position
    tiff, // make, model, software, dates
    iptc, // captions, credits
    png,  // text chunks, density, time of the last change
    jfif, // density of a JFIF header, remarks
    gif,  // remarks
};

struct Metadata
{
    MetadataFields exif = {};
    MetadataFields gps = {};
    MetadataFields tiff = {};
    MetadataFields iptc = {};
    std::vector<PngText> pngTexts = {};
    Resolution pngDensity = {};
    Resolution jfifDensity = {};
    std::vector<std::string> gifComments = {};  // raw bytes
    std::vector<std::string> jpegComments = {}; // raw bytes
    std::string pngTime = {};                   // the seven bytes of a tIME chunk; empty without one
    std::string xmp = {};                       // the packet as read; empty without one
    std::string extendedXmp = {};               // the part of a JPEG's packet that did not fit into it
    bool lacksXmp = false;                      // there is more of it than is read

    std::optional<int> orientation = {}; // 1 to 8, the EXIF numbering
    std::string colorModel = {};         // "RGB", "Gray", "CMYK" or "Lab"; empty when unknown
    std::string profileName = {};        // description of the embedded colour profile; empty without one

    void remove(MetadataGroup group);
    bool operator==(const Metadata&) const = default;
};

} // namespace lumora
