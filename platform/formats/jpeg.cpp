// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "encoded_bytes.h"
#include "format_io.h"
#include "jpeg/jpeg_loader.h"
#include "metadata/reading.h"
#include "metadata/resolution.h"
#include "vips_density.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>

#include <vips/vips.h>

namespace lumora {
namespace {

using namespace std::string_view_literals;

constexpr std::size_t startOfImage = 2;
constexpr std::size_t longestSegment = 65533; // its two length bytes count themselves

std::size_t lengthAt(const Bytes& jpeg, std::size_t at)
{
    return (std::to_integer<std::size_t>(jpeg[at + 2]) << 8U) + std::to_integer<std::size_t>(jpeg[at + 3]) +
           2;
}

// What does not fit into one segment is left out: readers of split ones are rare.
void appendSegment(Bytes& jpeg, unsigned char marker, std::string_view prefix, std::string_view content)
{
    const std::size_t size = prefix.size() + content.size();
    if (content.empty() || size > longestSegment) return;
    const std::size_t length = size + 2;
    jpeg.insert(jpeg.end(), {std::byte{0xFF}, std::byte{marker}, static_cast<std::byte>(length >> 8U),
                             static_cast<std::byte>(length & 0xFFU)});
    append(jpeg, prefix);
    append(jpeg, content);
}

// The image library writes no such header, and without one some readers guess at the colours. Ink has none.
void appendJfif(Bytes& jpeg, const Resolution& resolution)
{
    const auto pair = [](double value) {
        const auto dots = static_cast<unsigned>(std::lround(value));
        return std::string{static_cast<char>(dots >> 8U), static_cast<char>(dots & 0xFFU)};
    };
    // Unit 1 is dots an inch; unit 0 says that pixels are square and no more.
    const std::string density =
        resolution.isKnown() ? "\1" + pair(resolution.x) + pair(resolution.y) : std::string("\0\0\1\0\1"sv);
    appendSegment(jpeg, 0xE0, "JFIF\0\1\2"sv, density + std::string(2, '\0'));
}

// Replaces the blocks that the image library makes up by the picture's own metadata.
Bytes withSegments(const Bytes& jpeg, const EncodeRequest& request, bool isInk)
{
    Bytes result(jpeg.begin(), jpeg.begin() + startOfImage);
    std::size_t at = startOfImage;
    const auto isSegment = [&](std::byte marker) {
        return at + 4 <= jpeg.size() && jpeg[at] == std::byte{0xFF} && jpeg[at + 1] == marker;
    };
    while (isSegment(std::byte{0xE0}) || isSegment(std::byte{0xE1}))
        at += lengthAt(jpeg, at);
    if (!isInk) appendJfif(result, resolutionOf(request.metadata));
    appendSegment(result, 0xE1, "Exif\0\0"sv, exifBlock(request.metadata, request.facts));
    appendSegment(result, 0xE1, "http://ns.adobe.com/xap/1.0/\0"sv,
                  xmpPacket(request.metadata, request.facts));
    appendSegment(result, 0xED, "Photoshop 3.0\0"sv, iptcBlock(request.metadata));
    result.insert(result.end(), jpeg.begin() + static_cast<std::ptrdiff_t>(std::min(at, jpeg.size())),
                  jpeg.end());
    return result;
}

Result<Bytes> encode(const EncodeRequest& request)
{
    void* buffer = nullptr;
    std::size_t size = 0;
    const auto chroma =
        request.quality < fullChromaQuality ? VIPS_FOREIGN_SUBSAMPLE_ON : VIPS_FOREIGN_SUBSAMPLE_OFF;
    if (vips_jpegsave_buffer(request.image, &buffer, &size, "Q", request.quality, "optimize_coding", TRUE,
                             "interlace", TRUE, "subsample_mode", chroma, nullptr) != 0) {
        return takeVipsError();
    }
    const bool isInk = vips_image_get_bands(request.image) == 4;
    return withSegments(takeBytes(buffer, size), request, isInk);
}

Result<VipsImagePtr> load(int descriptor)
{
    return loadJpeg(1, descriptor);
}

void describe(int descriptor, VipsImage* image, Metadata& metadata)
{
    metadata.jfifDensity = densityOf(image);
    readContainer(descriptor, metadata);
}

bool begins(std::string_view head)
{
    return head.starts_with("\xFF\xD8\xFF"sv);
}

constexpr std::array extensions{"jpg"sv, "jpeg"sv};
constexpr std::array mimeTypes{"image/jpeg"sv};
constexpr StorageLimits limits{
    .holdsGray = true, .holdsInk = true, .profiles = ProfileStorage::any, .longestEdge = 65500};
constexpr FormatReader reader{
    .load = load, .describe = describe, .loadReduced = loadJpeg, .operation = "VipsForeignLoadJpeg"};
constexpr FormatWriter writer{.encode = encode, .operation = "VipsForeignSaveJpeg"};

} // namespace

constinit const Format jpegFormat{.identifier = "public.jpeg",
                                  .preferredExtension = "jpeg",
                                  .extensions = extensions,
                                  .mimeTypes = mimeTypes,
                                  .begins = begins,
                                  .limits = limits,
                                  .reader = &reader,
                                  .writer = &writer};

} // namespace lumora
