// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/bmp_codec.h"
#include "platform/saved_bytes.h"
#include "platform/stored_form.h"

#include <algorithm>
#include <span>

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

// The pixels decide: a damaged source may have said anything of itself.
bool isBlackAndWhite(VipsImage* image)
{
    const StoredForm form = storedForm(image);
    if (form.isIndexed || form.bits != 1) return false;
    std::size_t size = 0;
    void* memory = vips_image_write_to_memory(image, &size);
    if (!memory) return false;
    const std::span values(static_cast<const std::uint8_t*>(memory), size);
    const bool isPure = std::ranges::all_of(values, [](std::uint8_t v) { return v == 0 || v == 255; });
    g_free(memory);
    return isPure;
}

Result<Bytes> deflatedTiff(VipsImage* image)
{
    void* buffer = nullptr;
    std::size_t size = 0;
    if (vips_tiffsave_buffer(image, &buffer, &size, "compression", VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE,
                             "predictor", VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL, nullptr) != 0) {
        return takeVipsError();
    }
    return takeBytes(buffer, size);
}

Result<Bytes> blackAndWhiteTiff(VipsImage* image, VipsForeignTiffCompression compression)
{
    void* buffer = nullptr;
    std::size_t size = 0;
    if (vips_tiffsave_buffer(image, &buffer, &size, "compression", compression, "predictor",
                             VIPS_FOREIGN_TIFF_PREDICTOR_NONE, "bitdepth", 1, nullptr) != 0) {
        return takeVipsError();
    }
    return takeBytes(buffer, size);
}

// Writing suits the facsimile coding, dithered pictures the general one.
Result<Bytes> smallestBlackAndWhite(VipsImage* image)
{
    auto writing = blackAndWhiteTiff(image, VIPS_FOREIGN_TIFF_COMPRESSION_CCITTFAX4);
    auto picture = blackAndWhiteTiff(image, VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE);
    if (!writing || !picture) return writing ? writing : picture;
    return writing->size() <= picture->size() ? writing : picture;
}

} // namespace

Result<Bytes> encodeTiff(const EncodeRequest& request)
{
    const VipsImagePtr image = withResolution(request.image, request.metadata.resolution);
    if (!image) return takeVipsError();
    auto bytes = request.keepsModel && isBlackAndWhite(image.get()) ? smallestBlackAndWhite(image.get())
                                                                    : deflatedTiff(image.get());
    if (!bytes) return bytes.error();
    return withTiffMetadata(std::move(*bytes), request.metadata);
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
