// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/metadata_blocks.h"

#include "exiv2_library.h"
#include "maker_note.h"
#include "metadata/resolution.h"
#include "metadata_keys.h"
#include "xmp_packet.h"

#include <algorithm>
#include <array>

namespace lumora {
namespace {

// The entries of the first directory that describe the picture and not how its pixels lie in the source's
// file.
bool isDescriptive(std::uint16_t tag)
{
    constexpr std::array<std::uint16_t, 20> tags{
        0x000B, 0x010D,                          // processing software, document name
        0x010E, 0x010F, 0x0110,                  // description, make, model
        0x011A, 0x011B, 0x0128,                  // resolution
        0x0131, 0x0132, 0x013B, 0x013C,          // software, date, artist, host
        0x4746, 0x4749, 0x8298,                  // rating, copyright
        0x9C9B, 0x9C9C, 0x9C9D, 0x9C9E, 0x9C9F}; // title to subject, as a file manager writes them
    return std::ranges::find(tags, tag) != tags.end();
}

template <class Data>
void addIfSound(Data& data, const MetadataEntry& entry)
{
    try {
        addEntry(data, entry);
    } catch (const Exiv2::Error&) {
        // One entry that cannot be written costs only itself.
    }
}

Exiv2::ExifData exifOf(const ImageProperties& properties, const PictureFacts& facts)
{
    Exiv2::ExifData data;
    for (const auto& entry : groupOf(properties, PropertyKey::tiff)) {
        if (isDescriptive(Exiv2::ExifKey(entry.key).tag())) addIfSound(data, entry);
    }
    for (const PropertyKey key : {PropertyKey::exif, PropertyKey::gps}) {
        for (const auto& entry : groupOf(properties, key))
            addIfSound(data, entry);
    }
    if (data.empty()) return data;
    data["Exif.Photo.PixelXDimension"] = static_cast<std::uint32_t>(facts.width);
    data["Exif.Photo.PixelYDimension"] = static_cast<std::uint32_t>(facts.height);
    data["Exif.Photo.ColorSpace"] = exifColorSpace(facts);
    // The encoder's differences lie in the middle of the pixels that they colour, whatever the camera's did.
    constexpr std::uint16_t centred = 1;
    if (facts.isJpegColor) data["Exif.Image.YCbCrPositioning"] = centred;
    // "R03" claims a wider space than sRGB.
    const auto index = data.findKey(Exiv2::ExifKey("Exif.Iop.InteroperabilityIndex"));
    if (facts.isSrgb && index != data.end() && index->toString() == "R03") index->setValue("R98");
    return data;
}

std::string encodedExif(const Exiv2::ExifData& data)
{
    return data.empty() ? std::string{} : encodedWithMakerNote(data);
}

std::string encodedIptc(const ImageProperties& properties)
{
    Exiv2::IptcData data;
    for (const auto& entry : groupOf(properties, PropertyKey::iptc))
        addIfSound(data, entry);
    if (data.empty()) return {};
    return textOf(Exiv2::Photoshop::setIptcIrb(nullptr, 0, data));
}

std::string encodedXmp(const ImageProperties& properties, const PictureFacts& facts)
{
    const auto found = properties.find(PropertyKey::xmp);
    return found == properties.end() ? std::string{}
                                     : updatedXmpPacket(std::get<std::string>(found->second), facts);
}

std::vector<std::pair<std::string, std::string>> textsOf(const ImageProperties& properties)
{
    std::vector<std::pair<std::string, std::string>> texts;
    for (const auto& entry : groupOf(properties, PropertyKey::png)) {
        if (!entry.key.starts_with(metadata::pngText)) continue;
        std::string keyword = entry.key.substr(metadata::pngText.size());
        // XMP and what some programs store as hexadecimal text are written on their own.
        if (!keyword.starts_with("XML:") && !keyword.starts_with("Raw profile type "))
            texts.emplace_back(std::move(keyword), entry.bytes);
    }
    return texts;
}

std::vector<std::string> commentsOf(const ImageProperties& properties)
{
    std::vector<std::string> comments;
    for (const auto& entry : groupOf(properties, PropertyKey::gif)) {
        if (entry.key == metadata::gifComment) comments.push_back(entry.bytes);
    }
    return comments;
}

template <class Encode>
auto soundOrEmpty(Encode encode) -> decltype(encode())
{
    try {
        return encode();
    } catch (...) {
        return {};
    }
}

} // namespace

MetadataBlobs encodeMetadata(const ImageProperties& properties, const PictureFacts& facts) noexcept
{
    ensureExiv2Ready();
    return {soundOrEmpty([&] { return encodedExif(exifOf(properties, facts)); }),
            soundOrEmpty([&] { return encodedIptc(properties); }),
            soundOrEmpty([&] { return encodedXmp(properties, facts); }),
            textsOf(properties),
            commentsOf(properties),
            soundOrEmpty([&] { return resolutionOf(properties); })};
}

std::vector<std::byte> withTiffMetadata(std::vector<std::byte> tiff, const MetadataBlobs& blobs) noexcept
try {
    if (blobs.exif.empty() && blobs.iptc.empty() && blobs.xmp.empty()) return tiff;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as the library's bytes
    const auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(tiff.data()),
                                                 static_cast<long>(tiff.size()));
    image->readMetadata();
    Exiv2::ExifData added;
    if (!blobs.exif.empty()) {
        Exiv2::ExifParser::decode(added, bytesOf(blobs.exif), static_cast<std::uint32_t>(blobs.exif.size()));
    }
    // The directory of the new file describes its pixels and stays; what is added describes the picture.
    for (const auto& datum : added) {
        const auto found = image->exifData().findKey(Exiv2::ExifKey(datum.key()));
        if (datum.groupName() == "Image" && found != image->exifData().end()) image->exifData().erase(found);
        image->exifData().add(datum);
    }
    if (!blobs.xmp.empty()) Exiv2::XmpParser::decode(image->xmpData(), blobs.xmp);
    const std::uint8_t* records = nullptr;
    std::uint32_t headerSize = 0;
    std::uint32_t recordsSize = 0;
    if (!blobs.iptc.empty() &&
        Exiv2::Photoshop::locateIptcIrb(bytesOf(blobs.iptc), static_cast<long>(blobs.iptc.size()), &records,
                                        &headerSize, &recordsSize) == 0) {
        Exiv2::IptcParser::decode(image->iptcData(), records + headerSize, recordsSize);
    }
    image->writeMetadata();
    Exiv2::BasicIo& io = image->io();
    io.open();
    const Exiv2::DataBuf whole = io.read(static_cast<long>(io.size()));
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the library's bytes as bytes
    const auto* first = reinterpret_cast<const std::byte*>(whole.pData_);
    return {first, first + whole.size_};
} catch (...) {
    return tiff;
}

} // namespace lumora
