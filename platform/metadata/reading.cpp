// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/reading.h"

#include "descriptor_io.h"
#include "exiv2_library.h"
#include "maker_note.h"

#include <algorithm>
#include <array>
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
    if (group == "Image") return &metadata.tiff;
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

void addContainer(int descriptor, Metadata& metadata)
{
    const auto image = Exiv2::ImageFactory::open(openedForReading(descriptor));
    if (!image.get()) return;
    image->readMetadata();
    addExif(image->exifData(), metadata);
    for (const auto& datum : image->iptcData())
        metadata.iptc.push_back(fieldOf(datum));
    // As const, because the other form words the packet anew; of a TIFF there is only that one.
    const std::string& asRead = std::as_const(*image).xmpPacket();
    metadata.xmp = asRead.empty() ? image->xmpPacket() : asRead;
}

void addBlocks(std::string_view exif, std::string_view xmp, Metadata& metadata)
{
    metadata.xmp = std::string(xmp);
    if (exif.starts_with(exifPrefix)) exif.remove_prefix(exifPrefix.size());
    if (exif.empty()) return;
    Exiv2::ExifData data;
    Exiv2::ExifParser::decode(data, bytesOf(exif), static_cast<std::uint32_t>(exif.size()));
    addExif(data, metadata);
}

// What was read before the damage is kept.
template <class Read>
void readWhatIsSound(Read read) noexcept
try {
    ensureExiv2Ready();
    read();
} catch (...) {
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
