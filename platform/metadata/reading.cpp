// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/reading.h"

#include "descriptor_io.h"
#include "exiv2_library.h"
#include "hidden_xmp.h"
#include "maker_note.h"
#include "metadata/jpeg_segments.h"
#include "metadata/png_chunk_reader.h"
#include "metadata/xmp_size.h"
#include "system/file_bytes.h"

#include <algorithm>
#include <array>
#include <set>
#include <string>
#include <utility>

namespace lumora {
namespace {

constexpr std::string_view exifPrefix{"Exif\0\0", 6};

// Where a field belongs; nowhere for previews and further pictures, which stay behind.
MetadataFields* placeOf(const Exiv2::Exifdatum& datum, Metadata& metadata)
{
    constexpr std::array<std::string_view, 5> otherPictures{"Thumbnail", "SubThumb1", "MpfInfo", "Image2",
                                                            "Image3"};
    const std::string group = datum.groupName();
    if (group == "GPSInfo") return &metadata.gps;
    if (group == "Image") return isHiddenXmp(datum.tag()) ? nullptr : &metadata.tiff;
    if (group.starts_with("SubImage") || std::ranges::find(otherPictures, group) != otherPictures.end())
        return nullptr;
    return isLeftBehind(datum) ? nullptr : &metadata.exif;
}

void addExif(const Exiv2::ExifData& data, Metadata& metadata)
{
    for (const auto& datum : data) {
        if (MetadataFields* const place = placeOf(datum, metadata)) place->push_back(fieldOf(datum));
    }
}

std::string exifOfJpeg(int descriptor)
{
    for (const JpegSegment& segment : jpegSegments(descriptor)) {
        if (segment.content.starts_with(exifPrefix)) return segment.content.substr(exifPrefix.size());
    }
    return {};
}

// The first chunk that is an EXIF block: some writers put the prefix before it.
std::string exifOfPng(int descriptor)
{
    for (auto chunk = pngChunkAt(descriptor, firstPngChunk); chunk;
         chunk = pngChunkAt(descriptor, chunk->end())) {
        if (chunk->type != "eXIf") continue;
        std::string block = bytesAt(descriptor, chunk->dataAt, chunk->length).value_or("");
        if (block.starts_with(exifPrefix)) block.erase(0, exifPrefix.size());
        if (beginsTiff(block)) return block;
    }
    return {};
}

Exiv2::ExifData exifIn(std::string block)
{
    Exiv2::ExifData data;
    if (block.empty()) return data;
    hideXmpOfTiff(block);
    Exiv2::ExifParser::decode(data, bytesOf(block), static_cast<std::uint32_t>(block.size()));
    if (hasUnknownNote(data)) addNotePlace(block, data);
    return data;
}

// What the second one alone knows comes behind the first one's.
Exiv2::ExifData joined(Exiv2::ExifData first, const Exiv2::ExifData& second)
{
    std::set<std::string> known;
    for (const auto& datum : first)
        known.insert(datum.key());
    for (const auto& datum : second) {
        if (!known.contains(datum.key())) first.add(datum);
    }
    return first;
}

// What was read before the damage is kept.
template <class Read>
void readWhatIsSound(Read read) noexcept
try {
    ensureExiv2Ready();
    read();
} catch (...) {
}

void addContainer(int descriptor, Metadata& metadata)
{
    XmpInFile xmp = findXmp(descriptor);
    metadata.xmp = std::move(xmp.packet);
    metadata.extendedXmp = std::move(xmp.extension);
    metadata.lacksXmp = xmp.hasMore;
    const auto image = Exiv2::ImageFactory::open(openedForReading(descriptor, std::move(xmp.masks)));
    if (!image.get()) return;
    readWhatIsSound([&] { image->readMetadata(); });
    Exiv2::ExifData& data = image->exifData();
    if (image->imageType() == Exiv2::ImageType::png) {
        data = joined(exifIn(exifOfPng(descriptor)), data);
    } else if (hasUnknownNote(data)) {
        addNotePlace(exifOfJpeg(descriptor), data);
    }
    addExif(data, metadata);
    for (const auto& datum : image->iptcData())
        metadata.iptc.push_back(fieldOf(datum));
}

void addBlocks(std::string_view exif, std::string_view xmp, Metadata& metadata)
{
    metadata.lacksXmp = xmp.size() > largestXmp;
    if (!metadata.lacksXmp) metadata.xmp = std::string(xmp);
    if (exif.starts_with(exifPrefix)) exif.remove_prefix(exifPrefix.size());
    addExif(exifIn(std::string(exif)), metadata);
}

} // namespace

void readContainer(int descriptor, Metadata& metadata) noexcept
{
    readWhatIsSound([&] { addContainer(descriptor, metadata); });
}

void readBlocks(std::string_view exif, std::string_view xmp, Metadata& metadata) noexcept
{
    readWhatIsSound([&] { addBlocks(exif, xmp, metadata); });
}

} // namespace lumora
