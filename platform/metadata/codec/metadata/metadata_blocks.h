// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Metadata in and out: what a file carries is read into the groups of ImageProperties and written back as the
// blobs that containers embed. The orientation never takes part: it is a property of its own on the way in,
// and every picture that is written stands upright. Thread-safe; nothing here throws.
#pragma once

#include "metadata/metadata.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

struct _VipsImage;

namespace lumora {

// The metadata groups and the XMP packet of a file whose header the image library has loaded; the file itself
// is read where the library hands less on. Damaged metadata means fewer entries.
ImageProperties readMetadata(_VipsImage* header, std::string_view typeIdentifier,
                             const std::filesystem::path& file) noexcept;

// What the metadata must say about the picture that it travels with.
struct PictureFacts
{
    std::int64_t width; // pixels
    std::int64_t height;
    bool isSrgb;
    std::string profileName;  // description of the embedded colour profile; empty without one
    bool isJpegColor = false; // colours stored as brightness and two differences
};

// Dots an inch; zero where nothing tells.
struct Resolution
{
    double x = 0;
    double y = 0;

    bool isKnown() const { return x > 0 && y > 0; }
};

// As EXIF numbers them: sRGB, or left to the profile.
inline std::uint16_t exifColorSpace(const PictureFacts& facts)
{
    return facts.isSrgb ? 1 : 0xFFFF;
}

// Empty where there is nothing to say.
struct MetadataBlobs
{
    std::string exif; // a TIFF structure, without any container's prefix
    std::string iptc; // an image resource block that holds the IPTC records
    std::string xmp;  // a packet
    std::vector<std::pair<std::string, std::string>> texts; // keyword and UTF-8 text of PNG
    std::vector<std::string> comments;                      // raw remarks of GIF
    Resolution resolution;
};

// Pixel dimensions and colour space are brought up to date. Orientation, embedded previews, the layout of the
// source's own pixels and claims of further images in the file (gain maps) are left out.
MetadataBlobs encodeMetadata(const ImageProperties& properties, const PictureFacts& facts) noexcept;

// The TIFF file with the blobs inside; the file as it is when that fails.
std::vector<std::byte> withTiffMetadata(std::vector<std::byte> tiff, const MetadataBlobs& blobs) noexcept;

} // namespace lumora
