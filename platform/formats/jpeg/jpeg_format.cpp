// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "codec_target.h"
#include "encoded_bytes.h"
#include "exif_colors.h"
#include "format_io.h"
#include "jpeg/jpeg_encoder.h"
#include "jpeg/jpeg_gain_map.h"
#include "jpeg/jpeg_loader.h"
#include "jpeg/jpeg_pieces.h"
#include "jpeg/quality_coding.h"
#include "metadata/jpeg_segments.h"
#include "metadata/reading.h"
#include "metadata/remarks.h"
#include "metadata/resolution.h"
#include "png/png_chunks.h"
#include "vips_density.h"

#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include <vips/vips.h>

namespace lumora {
namespace {

using namespace std::string_view_literals;

constexpr auto exifPrefix = "Exif\0\0"sv;
constexpr unsigned char remarkMarker = 0xFE;
constexpr std::size_t startOfImage = 2;
constexpr std::size_t longestSegment = 65533; // its two length bytes count themselves

std::size_t lengthAt(const Bytes& jpeg, std::size_t at)
{
    return (std::to_integer<std::size_t>(jpeg[at + 2]) << 8U) + std::to_integer<std::size_t>(jpeg[at + 3]) +
           2;
}

// What does not fit into one segment is left out.
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

// What does not fit beside the packet's own prefix follows in pieces, each of which says where it belongs.
void appendXmp(Bytes& segments, const EncodeRequest& request)
{
    constexpr std::size_t pieceSize = 65000;
    const SplitXmp xmp =
        splitXmpPacket(request.metadata, request.facts, longestSegment - jpegXmpSignature.size());
    appendSegment(segments, 0xE1, jpegXmpSignature, xmp.packet);
    for (std::size_t at = 0; at < xmp.extension.size(); at += pieceSize) {
        const std::string head = xmp.extensionName + bigEndian(xmp.extension.size()) + bigEndian(at);
        appendSegment(segments, 0xE1, jpegExtendedXmpSignature + head, xmp.extension.substr(at, pieceSize));
    }
}

Bytes segmentsOf(const EncodeRequest& request)
{
    Bytes segments;
    const bool isInk = vips_image_get_bands(request.image) == 4;
    if (!isInk) appendJfif(segments, resolutionOf(request.metadata));
    appendSegment(segments, 0xE1, exifPrefix,
                  exifBlock(request.metadata, request.facts, longestSegment - exifPrefix.size()));
    appendXmp(segments, request);
    appendSegment(segments, 0xED, "Photoshop 3.0\0"sv, iptcBlock(request.metadata));
    for (const std::string& remark : remarksOf(request.metadata))
        appendSegment(segments, remarkMarker, {}, remark);
    return segments;
}

// Passes a JPEG on to its file as it comes, with the blocks that the image library makes up replaced by the
// picture's own.
class JpegFile
{
public:
    JpegFile(OutputFile& file, Bytes segments) : m_file(file), m_segments(std::move(segments)) {}

    Status append(std::span<const std::byte> bytes)
    {
        if (m_isPastHead) return m_file.append(bytes);
        m_head.insert(m_head.end(), bytes.begin(), bytes.end());
        std::size_t at = startOfImage;
        while (at + 4 <= m_head.size() && isReplaced(at))
            at += lengthAt(m_head, at);
        if (at + 4 > m_head.size()) return Done{}; // more is to come: behind the segments stands the picture
        m_isPastHead = true;
        m_segments.insert(m_segments.begin(), m_head.begin(), m_head.begin() + startOfImage);
        m_segments.insert(m_segments.end(), m_head.begin() + static_cast<std::ptrdiff_t>(at), m_head.end());
        m_head.clear();
        return m_file.append(m_segments);
    }

private:
    bool isReplaced(std::size_t at) const
    {
        return m_head[at] == std::byte{0xFF} &&
               (m_head[at + 1] == std::byte{0xE0} || m_head[at + 1] == std::byte{0xE1});
    }

    OutputFile& m_file;
    Bytes m_segments;
    Bytes m_head;
    bool m_isPastHead = false;
};

// The smallest coding has to know of all coefficients before the first of them is written. Noise takes two
// bytes for each, photographs a fourth of that. More than this is not held for it: such a file is coded from
// the top down, and a photograph comes out larger by three to ten percent.
constexpr std::int64_t mostCoefficientBytes = 600'000'000;

std::int64_t coefficientBytes(std::int64_t pixels, int components, bool hasFullChroma)
{
    return components == 3 && !hasFullChroma ? pixels * 3 : pixels * 2 * components;
}

bool isCodedWhole(VipsImage* image, bool hasFullChroma)
{
    const std::int64_t pixels = std::int64_t{vips_image_get_width(image)} * vips_image_get_height(image);
    return coefficientBytes(pixels, vips_image_get_bands(image), hasFullChroma) <= mostCoefficientBytes;
}

std::int64_t encodingBytes(const EncodedShape& shape)
{
    const bool hasFullChroma = shape.quality >= fullChromaQuality;
    const std::int64_t bytes = coefficientBytes(shape.pixels, 3, hasFullChroma);
    // A gray prefix is kept at a byte a pixel until it is known to be one.
    return shape.pixels + (bytes <= mostCoefficientBytes ? bytes : 0);
}

// Several passes over the picture, each finer than the one before.
std::int64_t decodingBytes(VipsImage* image)
{
    int isProgressive = 0;
    if (!vips_image_get_typeof(image, "jpeg-multiscan") ||
        vips_image_get_int(image, "jpeg-multiscan", &isProgressive) != 0 || isProgressive == 0)
        return 0;
    return wholePicture(image, 2);
}

// Ink has no differences of colours, and what is not coded whole the library codes by itself.
Status encodeByLibrary(const EncodeRequest& request, bool hasFullChroma, JpegFile& jpeg)
{
    CodecTarget target([&jpeg](std::span<const std::byte> bytes) { return jpeg.append(bytes); });
    const gboolean isWhole = isCodedWhole(request.image, hasFullChroma) ? TRUE : FALSE;
    const bool isWritten =
        vips_jpegsave_target(request.image, target.get(), "Q", request.quality, "optimize_coding", isWhole,
                             "interlace", isWhole, "subsample_mode",
                             hasFullChroma ? VIPS_FOREIGN_SUBSAMPLE_OFF : VIPS_FOREIGN_SUBSAMPLE_ON,
                             nullptr) == 0;
    return isWritten ? Status(Done{}) : target.error();
}

Status encode(const EncodeRequest& request, OutputFile& file)
{
    JpegFile jpeg(file, segmentsOf(request));
    const bool hasFullChroma = request.quality >= fullChromaQuality;
    const bool isInk = vips_image_get_bands(request.image) == 4;
    if (isInk || !isCodedWhole(request.image, hasFullChroma))
        return encodeByLibrary(request, hasFullChroma, jpeg);
    return encodeJpeg({request.image,
                       codingsOf(vips_image_get_bands(request.image), request.quality, hasFullChroma),
                       hasFullChroma, blobOf(request.image, VIPS_META_ICC_NAME)},
                      [&jpeg](std::span<const std::byte> bytes) { return jpeg.append(bytes); });
}

Result<VipsImagePtr> load(int descriptor)
{
    return loadJpeg(1, descriptor);
}

void describe(int descriptor, VipsImage* image, Metadata& metadata, SourceFacts& facts)
{
    metadata.jfifDensity = densityOf(image);
    readContainer(descriptor, metadata);
    attachCameraColors(image, metadata);
    std::vector<JpegSegment> segments = jpegSegments(descriptor);
    facts.hasGainMap = hasGainMap(descriptor, segments);
    for (JpegSegment& segment : segments) {
        if (segment.marker == remarkMarker && !segment.content.empty())
            metadata.jpegComments.push_back(std::move(segment.content));
    }
}

constexpr FormatReader reader{.load = load,
                              .describe = describe,
                              .loadReduced = loadJpeg,
                              .operation = "VipsForeignLoadJpeg",
                              .heldBytes = decodingBytes,
                              .pieces = jpegPieces};
constexpr FormatWriter writer{
    .encode = encode, .operation = "VipsForeignSaveJpeg", .heldBytes = encodingBytes};

} // namespace

constinit const Codec jpegCodec{.format = jpegFormat, .reader = reader, .writer = writer};

} // namespace lumora
