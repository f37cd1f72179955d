// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/blocks.h"

#include "exiv2_library.h"
#include "maker_note.h"
#include "xmp_packet.h"

#include <algorithm>
#include <array>
#include <limits>
#include <new>

namespace lumora {
namespace {

// The fields of the first directory that describe the picture and not how its pixels lie in the source's
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

Exiv2::ExifData exifOf(const Metadata& metadata, const PictureFacts& facts)
{
    Exiv2::ExifData data;
    for (const MetadataField& field : metadata.tiff) {
        if (isDescriptive(Exiv2::ExifKey(field.key).tag())) addIfSound(data, field);
    }
    for (const MetadataFields* fields : {&metadata.exif, &metadata.gps}) {
        for (const MetadataField& field : *fields)
            addIfSound(data, field);
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

// Damage costs the block; only a lack of memory is not the block's fault.
template <class Make>
auto soundOrEmpty(Make make) -> decltype(make())
try {
    ensureExiv2Ready();
    return make();
} catch (const std::bad_alloc&) {
    throw;
} catch (...) {
    return {};
}

// The directory of the new file describes its pixels and stays; what is added describes the picture.
void addExif(Exiv2::Image& image, const std::string& block)
{
    if (block.empty()) return;
    Exiv2::ExifData added;
    Exiv2::ExifParser::decode(added, bytesOf(block), static_cast<std::uint32_t>(block.size()));
    for (const auto& datum : added) {
        const auto found = image.exifData().findKey(Exiv2::ExifKey(datum.key()));
        if (datum.groupName() == "Image" && found != image.exifData().end()) image.exifData().erase(found);
        image.exifData().add(datum);
    }
}

void addIptc(Exiv2::Image& image, const std::string& block)
{
    const std::uint8_t* records = nullptr;
    std::uint32_t headerSize = 0;
    std::uint32_t recordsSize = 0;
    if (!block.empty() && Exiv2::Photoshop::locateIptcIrb(bytesOf(block), static_cast<long>(block.size()),
                                                          &records, &headerSize, &recordsSize) == 0) {
        Exiv2::IptcParser::decode(image.iptcData(), records + headerSize, recordsSize);
    }
}

// Null when the library cannot do it.
Exiv2::Image::AutoPtr tiffWith(std::span<std::byte> tiff, const std::string& exif, const std::string& iptc,
                               const std::string& xmp)
try {
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): bytes as the library's bytes
    auto image = Exiv2::ImageFactory::open(reinterpret_cast<const Exiv2::byte*>(tiff.data()),
                                           static_cast<long>(tiff.size()));
    image->readMetadata();
    addExif(*image, exif);
    addIptc(*image, iptc);
    if (!xmp.empty()) Exiv2::XmpParser::decode(image->xmpData(), xmp);
    image->writeMetadata();
    return image;
} catch (const std::bad_alloc&) {
    throw;
} catch (...) {
    return Exiv2::Image::AutoPtr();
}

std::string exifWithin(const Metadata& metadata, const PictureFacts& facts, const NoteLimits& limits)
{
    return soundOrEmpty([&] {
        Exiv2::ExifData data = exifOf(metadata, facts);
        return data.empty() ? std::string{} : encodedWithMakerNote(std::move(data), limits);
    });
}

} // namespace

std::string exifBlock(const Metadata& metadata, const PictureFacts& facts, std::size_t longest)
{
    return exifWithin(metadata, facts, {.longestBlock = longest});
}

std::string iptcBlock(const Metadata& metadata)
{
    return soundOrEmpty([&] {
        Exiv2::IptcData data;
        for (const MetadataField& field : metadata.iptc)
            addIfSound(data, field);
        return data.empty() ? std::string{} : textOf(Exiv2::Photoshop::setIptcIrb(nullptr, 0, data));
    });
}

std::string xmpPacket(const Metadata& metadata, const PictureFacts& facts)
{
    return splitXmpPacket(metadata, facts, std::numeric_limits<std::size_t>::max()).packet;
}

SplitXmp splitXmpPacket(const Metadata& metadata, const PictureFacts& facts, std::size_t longest)
{
    if (metadata.xmp.empty()) return {};
    return soundOrEmpty([&] { return updatedXmp({metadata.xmp, metadata.extendedXmp}, facts, longest); });
}

Status withTiffMetadata(std::span<std::byte> tiff, const Metadata& metadata, const PictureFacts& facts,
                        const FileTaker& take)
{
    // The library lays a TIFF file out anew.
    const std::string exif = exifWithin(metadata, facts, {.mayStayInPlace = false});
    const std::string iptc = iptcBlock(metadata);
    const std::string xmp = xmpPacket(metadata, facts);
    if (exif.empty() && iptc.empty() && xmp.empty()) return Done{};
    const auto image = tiffWith(tiff, exif, iptc, xmp);
    if (!image.get()) return Done{};
    Exiv2::BasicIo& io = image->io();
    if (io.open() != 0) return Done{};
    const Exiv2::IoCloser closer(io);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the library's bytes as bytes
    return take({reinterpret_cast<const std::byte*>(io.mmap()), static_cast<std::size_t>(io.size())});
}

} // namespace lumora
