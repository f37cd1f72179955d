// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/bmp_codec.h"
#include "platform/saved_bytes.h"

namespace lumora {
namespace {

VipsImagePtr withResolution(VipsImage* image, const Resolution& resolution)
{
    constexpr double inchesInMillimetre = 1 / 25.4;
    VipsImage* copy = nullptr;
    if (!resolution.isKnown()) {
        vips_copy(image, &copy, nullptr);
    } else {
        vips_copy(image, &copy, "xres", resolution.x * inchesInMillimetre, "yres",
                  resolution.y * inchesInMillimetre, nullptr);
    }
    return VipsImagePtr(copy);
}

} // namespace

Result<Bytes> encodeTiff(const EncodeRequest& request)
{
    void* buffer = nullptr;
    std::size_t size = 0;
    const VipsImagePtr image = withResolution(request.image, request.metadata.resolution);
    if (!image) return takeVipsError();
    if (vips_tiffsave_buffer(image.get(), &buffer, &size, "compression",
                             VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE, "predictor",
                             VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL, nullptr) != 0) {
        return takeVipsError();
    }
    return withTiffMetadata(takeBytes(buffer, size), request.metadata);
}

Result<Bytes> encodeBmpFile(const EncodeRequest& request)
{
    VipsImage* wide = nullptr;
    const int bands = vips_image_get_bands(request.image);
    // Gray with alpha has no form of its own there.
    if (bands == 2) {
        if (vips_colourspace(request.image, &wide, VIPS_INTERPRETATION_sRGB, nullptr) != 0)
            return takeVipsError();
    } else {
        wide = request.image;
        g_object_ref(wide);
    }
    const VipsImagePtr image(wide);
    std::size_t size = 0;
    void* rows = vips_image_write_to_memory(wide, &size);
    if (!rows) return takeVipsError();
    const Bytes packed = takeBytes(rows, size);
    return encodeBmp(vips_image_get_width(wide), vips_image_get_height(wide), vips_image_get_bands(wide),
                     packed);
}

} // namespace lumora
