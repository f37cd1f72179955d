// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One container, three names for what the pictures in it are coded with.
#include "format_io.h"
#include "heif/heic_encoder.h"
#include "heif/heif_file.h"
#include "heif/heif_loader.h"
#include "pixels/color_profile.h"
#include "pixels/described_colors.h"
#include "types/heif_items.h"
#include "vips_loading.h"

#include <algorithm>
#include <array>
#include <string>

namespace lumora {
namespace {

void describe(int descriptor, VipsImage* image, Metadata& metadata, SourceFacts& facts)
{
    const HeifExtras extras = heifExtras(descriptor);
    readAttachedMetadata(image, metadata);
    metadata.xmp = extras.xmp.value_or("");
    metadata.lacksXmp = !extras.xmp;
    if (extras.colors && attachedProfile(image).empty()) attachColors(image, *extras.colors);

    int bits = 0; // as stored, which the image library widens
    if (vips_image_get_typeof(image, "heif-bitdepth") &&
        vips_image_get_int(image, "heif-bitdepth", &bits) == 0)
        facts.bits = bits;
    const auto isGainMap = [](const std::string& type) {
        return type.find("hdrgainmap") != std::string::npos;
    };
    facts.hasGainMap =
        std::ranges::any_of(extras.auxiliaryTypes, isGainMap) || heifItems(descriptor).contain("tmap");
}

// The components, planes, and what the search of the encoder keeps of each block.
std::int64_t encodingBytes(const EncodedShape& shape)
{
    constexpr int searchBytes = 12;
    return shape.pixels * (shape.pixelBytes + searchBytes);
}

constexpr FormatReader reader{
    .load = loadHeif, .describe = describe, .leavesHoles = true, .heldBytes = heifDecodingBytes};
constexpr FormatWriter heicWriter{
    .encode = encodeHeic, .isAvailable = hasHevcEncoder, .heldBytes = encodingBytes};

} // namespace

constinit const Codec heicCodec{.format = heicFormat, .reader = reader, .writer = heicWriter};
constinit const Codec heifCodec{.format = heifFormat, .reader = reader};
constinit const Codec avifCodec{.format = avifFormat, .reader = reader};

} // namespace lumora
