// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "format_io.h"
#include "metadata/reading.h"
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

constexpr FormatReader reader{
    .load = load, .describe = describe, .operation = "VipsForeignLoadWebp", .heldBytes = decodingBytes};
constexpr FormatWriter writer{.encode = nullptr, .heldBytes = encodingBytes};

} // namespace

constinit const Codec webpCodec{.format = webpFormat, .reader = reader, .writer = writer};

} // namespace lumora
