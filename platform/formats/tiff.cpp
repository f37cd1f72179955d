// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "encoded_bytes.h"
#include "format_io.h"
#include "metadata/reading.h"
#include "metadata/resolution.h"
#include "pixels/stored_form.h"
#include "tiff/tiff_loader.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <vips/vips.h>

namespace lumora {
namespace {

using namespace std::string_view_literals;

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

Result<Bytes> encode(const EncodeRequest& request)
{
    const VipsImagePtr image = withResolution(request.image, resolutionOf(request.metadata));
    if (!image) return takeVipsError();
    auto bytes = request.keepsModel && isBlackAndWhite(image.get()) ? smallestBlackAndWhite(image.get())
                                                                    : codedTiff(image.get(), {});
    if (!bytes) return bytes.error();
    return withTiffMetadata(std::move(*bytes), request.metadata, request.facts);
}

// The image library widens the components of a grey picture without saying so.
void noteGrayForm(VipsImage* image, const MetadataFields& fields)
{
    if (vips_image_get_bands(image) != 1 || vips_image_get_format(image) != VIPS_FORMAT_UCHAR) return;
    if (fields.empty()) return;
    int bits = 1; // what the field means when it is absent
    for (const MetadataField& field : fields) {
        if (field.key == "Exif.Image.BitsPerSample" && !field.bytes.empty())
            bits = static_cast<unsigned char>(field.bytes.front());
    }
    noteGrayBits(image, bits);
}

void describe(int descriptor, VipsImage* image, Metadata& metadata)
{
    readContainer(descriptor, metadata);
    noteGrayForm(image, metadata.tiff);
}

bool begins(std::string_view head)
{
    return std::ranges::any_of(std::array{"II*\0"sv, "MM\0*"sv, "II+\0"sv, "MM\0+"sv},
                               [head](std::string_view magic) { return head.starts_with(magic); });
}

constexpr std::array extensions{"tif"sv, "tiff"sv};
constexpr std::array mimeTypes{"image/tiff"sv};
constexpr StorageLimits limits{.holdsSixteenBits = true,
                               .holdsGray = true,
                               .holdsInk = true,
                               .holdsAlpha = true,
                               .holdsAnyModel = true,
                               .profiles = ProfileStorage::any};
constexpr FormatReader reader{.load = loadTiff, .describe = describe, .operation = "VipsForeignLoadTiff"};
constexpr FormatWriter writer{.encode = encode, .operation = "VipsForeignSaveTiff"};

} // namespace

constinit const Format tiffFormat{.identifier = "public.tiff",
                                  .preferredExtension = "tiff",
                                  .extensions = extensions,
                                  .mimeTypes = mimeTypes,
                                  .begins = begins,
                                  .limits = limits,
                                  .reader = &reader,
                                  .writer = &writer};

} // namespace lumora
