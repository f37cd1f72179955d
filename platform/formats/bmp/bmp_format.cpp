// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_codec.h"
#include "bmp/bmp_loader.h"
#include "encoded_bytes.h"
#include "format_io.h"
#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "vips_loading.h"

#include <array>

namespace lumora {
namespace {

using namespace std::string_view_literals;

// Gray with alpha has no form of its own there.
Result<VipsImagePtr> inStorableBands(VipsImage* image)
{
    VipsImage* wide = nullptr;
    if (vips_image_get_bands(image) == 2) {
        if (vips_colourspace(image, &wide, VIPS_INTERPRETATION_sRGB, nullptr) != 0) return takeVipsError();
    } else {
        wide = image;
        g_object_ref(wide);
    }
    return VipsImagePtr(wide);
}

Status encode(const EncodeRequest& request, OutputFile& file)
{
    const auto image = inStorableBands(request.image);
    if (!image) return image.error();
    const auto rows = componentsOf(image->get());
    if (!rows) return rows.error();
    return encodeBmp(vips_image_get_width(image->get()), vips_image_get_height(image->get()),
                     vips_image_get_bands(image->get()), std::as_bytes(rows->bytes()),
                     std::as_bytes(attachedProfile(request.image)),
                     [&file](std::span<const std::byte> piece) { return file.append(piece); });
}

void describe(int, VipsImage* image, Metadata& metadata, SourceFacts&)
{
    readAttachedMetadata(image, metadata);
}

// The file.
std::int64_t decodingBytes(VipsImage* image)
{
    return wholePicture(image);
}

std::int64_t encodingBytes(const EncodedShape& shape)
{
    return shape.pixels * shape.pixelBytes;
}

constexpr FormatReader reader{.load = loadBmp, .describe = describe, .heldBytes = decodingBytes};
constexpr FormatWriter writer{.encode = encode, .heldBytes = encodingBytes};

} // namespace

constinit const Codec bmpCodec{.format = bmpFormat, .reader = reader, .writer = writer};

} // namespace lumora
