// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_codec.h"
#include "encoded_bytes.h"
#include "pixels/stored_form.h"

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
    const auto components = componentsOf(image);
    return components &&
           std::ranges::all_of(components->bytes(), [](std::uint8_t v) { return v == 0 || v == 255; });
}

struct TiffCoding
{
    VipsForeignTiffCompression compression = VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE;
    VipsForeignTiffPredictor predictor = VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL;
    int bits = 0; // a component's; 0 leaves them as they are
};

Result<Bytes> codedTiff(VipsImage* image, const TiffCoding& coding)
{
    void* buffer = nullptr;
    std::size_t size = 0;
    if (vips_tiffsave_buffer(image, &buffer, &size, "compression", coding.compression, "predictor",
                             coding.predictor, "bitdepth", coding.bits, nullptr) != 0) {
        return takeVipsError();
    }
    return takeBytes(buffer, size);
}

// Writing suits the facsimile coding, dithered pictures the general one.
Result<Bytes> smallestBlackAndWhite(VipsImage* image)
{
    const auto coded = [&](VipsForeignTiffCompression compression) {
        return codedTiff(image, {compression, VIPS_FOREIGN_TIFF_PREDICTOR_NONE, 1});
    };
    auto writing = coded(VIPS_FOREIGN_TIFF_COMPRESSION_CCITTFAX4);
    auto picture = coded(VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE);
    if (!writing || !picture) return writing ? writing : picture;
    return writing->size() <= picture->size() ? writing : picture;
}

} // namespace

Result<Bytes> encodeTiff(const EncodeRequest& request)
{
    const VipsImagePtr image = withResolution(request.image, request.metadata.resolution);
    if (!image) return takeVipsError();
    auto bytes = request.keepsModel && isBlackAndWhite(image.get()) ? smallestBlackAndWhite(image.get())
                                                                    : codedTiff(image.get(), {});
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
    const auto rows = componentsOf(wide);
    if (!rows) return rows.error();
    return encodeBmp(vips_image_get_width(wide), vips_image_get_height(wide), vips_image_get_bands(wide),
                     std::as_bytes(rows->bytes()));
}

} // namespace lumora
