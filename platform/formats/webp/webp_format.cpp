// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "format_io.h"
#include "formats/cwebp.h"
#include "metadata/reading.h"
#include "system/bundle.h"
#include "vips_loading.h"

#include <array>

namespace lumora {
namespace {

using namespace std::string_view_literals;

Result<VipsImagePtr> load(int descriptor)
{
    return loadStrictly(vips_webpload_source, descriptor);
}

void describe(int descriptor, VipsImage*, Metadata& metadata, SourceFacts& facts)
{
    readContainer(descriptor, metadata);
    facts.series = SourceFacts::Series::frames;
}

bool begins(std::string_view head)
{
    return head.size() >= 12 && head.starts_with("RIFF"sv) && head.substr(8, 4) == "WEBP"sv;
}

std::int64_t decodingBytes(VipsImage* image)
{
    return 2 * wholePicture(image);
}

// Of the external encoder, measured at its lossy coding; ours are a few rows.
std::int64_t encodingBytes(const EncodedShape& shape)
{
    constexpr int encoderBytes = 8;
    return shape.pixels * encoderBytes;
}

bool hasEncoder()
{
    return findCwebp(mainBundlePath()).has_value();
}

constexpr std::array extensions{"webp"sv};
constexpr std::array mimeTypes{"image/webp"sv};
// Of the encoder's road by a PPM file. Its words about a longer edge tell more than ours would.
constexpr StorageLimits limits{.longestEdge = 16383};
constexpr FormatReader reader{
    .load = load, .describe = describe, .operation = "VipsForeignLoadWebp", .heldBytes = decodingBytes};
constexpr FormatWriter writer{.encode = nullptr, .isAvailable = hasEncoder, .heldBytes = encodingBytes};

} // namespace

constinit const Format webpFormat{.identifier = "org.webmproject.webp",
                                  .preferredExtension = "webp",
                                  .extensions = extensions,
                                  .mimeTypes = mimeTypes,
                                  .begins = begins,
                                  .limits = limits,
                                  .reader = &reader,
                                  .writer = &writer};

} // namespace lumora
