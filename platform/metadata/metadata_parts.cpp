// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/metadata_parts.h"

#include "metadata/remarks.h"
#include "xmp_packet.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace lumora {
namespace {

constexpr std::string_view noteKey = "Exif.Photo.MakerNote";

bool isOfNote(const MetadataField& field)
{
    constexpr std::array standard{"Exif.Photo.", "Exif.Iop.", "Exif.GPSInfo.", "Exif.Image."};
    return field.key == noteKey ||
           std::ranges::none_of(standard, [&](const char* group) { return field.key.starts_with(group); });
}

bool describesPixels(const MetadataField& field)
{
    constexpr std::array<std::string_view, 9> keys{"Exif.Photo.PixelXDimension",
                                                   "Exif.Photo.PixelYDimension",
                                                   "Exif.Photo.ColorSpace",
                                                   "Exif.Photo.ComponentsConfiguration",
                                                   "Exif.Photo.ExifVersion",
                                                   "Exif.Photo.FlashpixVersion",
                                                   "Exif.Photo.InteroperabilityTag",
                                                   "Exif.Photo.0xea1d",
                                                   "Exif.Photo.CompressedBitsPerPixel"};
    return std::ranges::find(keys, field.key) != keys.end() || field.key.starts_with("Exif.Iop.");
}

// Of the first directory, which in a TIFF file describes the pixels in the first place.
bool isOfInterest(const MetadataField& field)
{
    constexpr std::array<std::string_view, 16> keys{"Exif.Image.ProcessingSoftware",
                                                    "Exif.Image.DocumentName",
                                                    "Exif.Image.ImageDescription",
                                                    "Exif.Image.Make",
                                                    "Exif.Image.Model",
                                                    "Exif.Image.Software",
                                                    "Exif.Image.DateTime",
                                                    "Exif.Image.Artist",
                                                    "Exif.Image.HostComputer",
                                                    "Exif.Image.Copyright",
                                                    "Exif.Image.Rating",
                                                    "Exif.Image.XPTitle",
                                                    "Exif.Image.XPComment",
                                                    "Exif.Image.XPAuthor",
                                                    "Exif.Image.XPKeywords",
                                                    "Exif.Image.XPSubject"};
    return std::ranges::find(keys, field.key) != keys.end();
}

bool isOfPicture(const MetadataField& field)
{
    return !isOfNote(field) && !describesPixels(field);
}

bool hasExif(const Metadata& metadata)
{
    return !metadata.gps.empty() || std::ranges::any_of(metadata.tiff, isOfInterest) ||
           std::ranges::any_of(metadata.exif, isOfPicture);
}

// Containers have room for so much and leave out the largest fields first.
bool lacksLargeField(const MetadataFields& original, const MetadataFields& copy)
{
    constexpr std::size_t large = 4096;
    return std::ranges::any_of(original, [&](const MetadataField& field) {
        return field.bytes.size() >= large && isOfPicture(field) &&
               std::ranges::find(copy, field.key, &MetadataField::key) == copy.end();
    });
}

bool isPlainText(const PngText& text)
{
    return text.keyword != remarkKeyword && !text.keyword.starts_with("XML:") &&
           !text.keyword.starts_with("Raw profile type ");
}

MetadataParts partsOf(const Metadata& metadata)
{
    MetadataParts parts;
    const auto add = [&](MetadataPart part, bool isThere) {
        if (isThere) parts.insert(part);
    };
    add(MetadataPart::exif, hasExif(metadata));
    add(MetadataPart::makerNote,
        std::ranges::find(metadata.exif, noteKey, &MetadataField::key) != metadata.exif.end());
    add(MetadataPart::iptc, !metadata.iptc.empty());
    add(MetadataPart::xmp, !metadata.xmp.empty());
    add(MetadataPart::comments, !remarksOf(metadata).empty());
    add(MetadataPart::pngTexts, std::ranges::any_of(metadata.pngTexts, isPlainText));
    add(MetadataPart::pngTime, !metadata.pngTime.empty());
    return parts;
}

} // namespace

MetadataParts missingParts(const Metadata& original, const Metadata& copy)
{
    const MetadataParts before = partsOf(original);
    const MetadataParts after = partsOf(copy);
    MetadataParts missing;
    std::ranges::set_difference(before, after, std::inserter(missing, missing.end()));
    if (lacksLargeField(original.exif, copy.exif)) missing.insert(MetadataPart::exif);
    if (missing.contains(MetadataPart::xmp) && speaksOfOtherDataOnly(original.xmp))
        missing.erase(MetadataPart::xmp);
    if (original.lacksXmp && !copy.lacksXmp) missing.insert(MetadataPart::xmp);
    return missing;
}

std::string_view nameOf(MetadataPart part)
{
    switch (part) {
    case MetadataPart::exif:
        return "EXIF";
    case MetadataPart::makerNote:
        return "maker note";
    case MetadataPart::iptc:
        return "IPTC";
    case MetadataPart::xmp:
        return "XMP";
    case MetadataPart::comments:
        return "comments";
    case MetadataPart::pngTexts:
        return "PNG texts";
    case MetadataPart::pngTime:
        break;
    }
    return "PNG time";
}

} // namespace lumora
