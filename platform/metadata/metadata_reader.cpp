// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/metadata_blocks.h"

#include "exiv2_library.h"
#include "gif/gif_comments.h"
#include "maker_note.h"
#include "metadata/resolution.h"
#include "metadata_keys.h"
#include "pixels/vips_library.h"
#include "png/png_texts.h"
#include "system/regular_file.h"

#include <vips/vips.h>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace lumora {
namespace {

constexpr std::string_view exifPrefix{"Exif\0\0", 6};

// The group that a field belongs to; none for previews and further pictures, which stay behind.
std::optional<PropertyKey> groupOf(const Exiv2::Exifdatum& datum)
{
    constexpr std::array<std::string_view, 5> otherPictures{"Thumbnail", "SubThumb1", "MpfInfo", "Image2",
                                                            "Image3"};
    const std::string group = datum.groupName();
    if (group == "GPSInfo") return PropertyKey::gps;
    if (group == "Image") return PropertyKey::tiff;
    if (group.starts_with("SubImage") || std::ranges::find(otherPictures, group) != otherPictures.end())
        return std::nullopt;
    return isLeftBehind(datum) ? std::nullopt : std::optional(PropertyKey::exif);
}

void addExif(ImageProperties& properties, const Exiv2::ExifData& data)
{
    for (const auto& datum : data) {
        if (const auto key = groupOf(datum)) groupIn(properties, *key).push_back(entryOf(datum));
    }
}

void addXmp(ImageProperties& properties, std::string_view packet)
{
    if (!packet.empty()) properties[PropertyKey::xmp] = std::string(packet);
}

// The formats whose containers the metadata library opens itself.
void addFromFile(ImageProperties& properties, const std::filesystem::path& file)
{
    const auto image = Exiv2::ImageFactory::open(std::filesystem::absolute(file).string());
    if (!image.get()) return;
    image->readMetadata();
    addExif(properties, image->exifData());
    for (const auto& datum : image->iptcData())
        groupIn(properties, PropertyKey::iptc).push_back(entryOf(datum));
    // As const, because the other form words the packet anew; of a TIFF there is only that one.
    const std::string& asRead = std::as_const(*image).xmpPacket();
    addXmp(properties, asRead.empty() ? image->xmpPacket() : asRead);
}

void addFromBlobs(ImageProperties& properties, VipsImage* header)
{
    std::string_view exif = blobOf(header, VIPS_META_EXIF_NAME);
    if (exif.starts_with(exifPrefix)) exif.remove_prefix(exifPrefix.size());
    if (!exif.empty()) {
        Exiv2::ExifData data;
        Exiv2::ExifParser::decode(data, bytesOf(exif), static_cast<std::uint32_t>(exif.size()));
        addExif(properties, data);
    }
    addXmp(properties, blobOf(header, VIPS_META_XMP_NAME));
}

void addPngTexts(ImageProperties& properties, const std::filesystem::path& file)
{
    for (PngText& text : readPngTexts(file)) {
        groupIn(properties, PropertyKey::png)
            .push_back(
                {std::string(metadata::pngText) + text.keyword, Exiv2::undefined, std::move(text.text)});
    }
}

void addGifComments(ImageProperties& properties, const std::filesystem::path& file)
{
    constexpr std::size_t largestFile = std::size_t{1} << 26U;
    const auto gif = openRegularFile(file);
    const auto bytes = gif ? readAll(gif->get(), largestFile) : Result<std::vector<std::byte>>(gif.error());
    if (!bytes) return;
    for (std::string& text : gifComments(*bytes)) {
        groupIn(properties, PropertyKey::gif)
            .push_back({std::string(metadata::gifComment), Exiv2::undefined, std::move(text)});
    }
}

bool isOpenedByMetadataLibrary(std::string_view type)
{
    constexpr std::array<std::string_view, 4> types{"public.jpeg", "public.png", "public.tiff",
                                                    "org.webmproject.webp"};
    return std::find(types.begin(), types.end(), type) != types.end();
}

} // namespace

ImageProperties readMetadata(_VipsImage* header, std::string_view typeIdentifier,
                             const std::filesystem::path& file) noexcept
{
    ImageProperties properties;
    try {
        ensureExiv2Ready();
        addDensity(properties, header, typeIdentifier);
        if (typeIdentifier == "public.png") addPngTexts(properties, file);
        if (typeIdentifier == "com.compuserve.gif") addGifComments(properties, file);
        if (isOpenedByMetadataLibrary(typeIdentifier)) {
            addFromFile(properties, file);
        } else {
            addFromBlobs(properties, header);
        }
    } catch (...) {
        // Damaged metadata is no damage to the picture; what was read before it is kept.
    }
    return properties;
}

} // namespace lumora
