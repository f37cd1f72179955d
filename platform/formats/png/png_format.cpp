// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "format_io.h"
#include "metadata/png_chunk_reader.h"
#include "metadata/reading.h"
#include "pixels/stored_form.h"
#include "png/png_colors.h"
#include "png/png_encoder.h"
#include "png/png_pieces.h"
#include "png/png_texts.h"
#include "system/file_bytes.h"
#include "vips_density.h"
#include "vips_loading.h"

#include <unistd.h>

#include <array>
#include <utility>

namespace lumora {
namespace {

using namespace std::string_view_literals;

bool hasBeforePixels(int descriptor, std::string_view type)
{
    auto chunk = pngChunkAt(descriptor, firstPngChunk);
    while (chunk && chunk->type != "IDAT" && chunk->type != type)
        chunk = pngChunkAt(descriptor, chunk->end());
    return chunk && chunk->type == type;
}

// The image library widens the components of a grey picture, and makes alpha of a transparent colour, without
// saying so.
void noteForm(VipsImage* image, int descriptor)
{
    constexpr off_t depthPosition = 24; // in the header chunk, then the colour type
    constexpr std::uint8_t gray = 0;
    constexpr std::uint8_t rgb = 2;
    std::array<std::uint8_t, 2> depthAndType{};
    if (pread(descriptor, depthAndType.data(), depthAndType.size(), depthPosition) != 2) return;
    const auto [depth, type] = depthAndType;
    if (type == gray) noteGrayBits(image, depth);
    if ((type == gray || type == rgb) && hasBeforePixels(descriptor, "tRNS")) noteTransparentColor(image);
}

Result<VipsImagePtr> load(int descriptor)
{
    if (!hasSoundPngHead(descriptor)) return Error{"damaged PNG"};
    auto image = loadStrictly(vips_pngload_source, descriptor);
    if (!image) return image;
    noteForm(image->get(), descriptor);
    return withPngColors(std::move(*image), descriptor);
}

// The image library knows no animation here; its chunk begins with the number of frames.
int framesIn(int descriptor)
{
    int frames = 1;
    auto chunk = pngChunkAt(descriptor, firstPngChunk);
    for (; chunk && chunk->type != "IDAT"; chunk = pngChunkAt(descriptor, chunk->end())) {
        if (chunk->type != "acTL") continue;
        constexpr std::uint64_t most = std::uint64_t{1} << 24U; // more is a lie
        const auto count = bigEndianAt(bytesAt(descriptor, chunk->dataAt, 4).value_or(""), 0, 4);
        if (count > 0 && count < most) frames = static_cast<int>(count);
    }
    return frames;
}

void describe(int descriptor, VipsImage* image, Metadata& metadata, SourceFacts& facts)
{
    metadata.pngDensity = densityOf(image);
    metadata.pngTexts = readPngTexts(descriptor);
    metadata.pngTime = readPngTime(descriptor);
    readContainer(descriptor, metadata);
    if (metadata.xmp.empty()) {
        metadata.xmp = xmpAmong(metadata.pngTexts);
        metadata.lacksXmp = metadata.lacksXmp && metadata.xmp.empty();
    }
    facts.series = SourceFacts::Series::frames;
    facts.pictures = framesIn(descriptor);
}

std::int64_t decodingBytes(VipsImage* image)
{
    return vips_image_get_typeof(image, "interlaced") ? wholePicture(image) : 0;
}

// The components and the compressed file, which is seldom much smaller where memory counts.
std::int64_t encodingBytes(const EncodedShape& shape)
{
    return 2 * shape.pixels * shape.pixelBytes;
}

constexpr FormatReader reader{.load = load,
                              .describe = describe,
                              .operation = "VipsForeignLoadPng",
                              .heldBytes = decodingBytes,
                              .pieces = pngPieces};
constexpr FormatWriter writer{.encode = encodePng, .heldBytes = encodingBytes};

} // namespace

constinit const Codec pngCodec{.format = pngFormat, .reader = reader, .writer = writer};

} // namespace lumora
