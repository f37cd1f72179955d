// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "encoded_bytes.h"
#include "exif_colors.h"
#include "format_io.h"
#include "metadata/reading.h"
#include "metadata/resolution.h"
#include "pixels/stored_form.h"
#include "system/mapped_file.h"
#include "tiff/tiff_loader.h"
#include "tiff/tiff_pages.h"

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

bool mayBeBlackAndWhite(VipsImage* image)
{
    const StoredForm form = storedForm(image);
    return !form.isIndexed && form.bits == 1;
}

// The pixels decide: a damaged source may have said anything of itself.
bool isBlackAndWhite(VipsImage* image)
{
    const auto components = componentsOf(image);
    return components &&
           std::ranges::all_of(components->bytes(), [](std::uint8_t v) { return v == 0 || v == 255; });
}

Result<Bytes> codedBlackAndWhite(VipsImage* image, VipsForeignTiffCompression compression)
{
    constexpr int bits = 1;
    void* buffer = nullptr;
    std::size_t size = 0;
    if (vips_tiffsave_buffer(image, &buffer, &size, "compression", compression, "predictor",
                             VIPS_FOREIGN_TIFF_PREDICTOR_NONE, "bitdepth", bits, nullptr) != 0)
        return takeVipsError();
    return takeBytes(buffer, size);
}

// Writing suits the facsimile coding, dithered pictures the general one.
Result<Bytes> smallestBlackAndWhite(VipsImage* image)
{
    auto writing = codedBlackAndWhite(image, VIPS_FOREIGN_TIFF_COMPRESSION_CCITTFAX4);
    auto picture = codedBlackAndWhite(image, VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE);
    if (!writing || !picture) return writing ? writing : picture;
    return writing->size() <= picture->size() ? writing : picture;
}

Status writeRows(VipsImage* image, OutputFile& file)
{
    const std::unique_ptr<VipsTarget, VipsUnref> target(vips_target_new_to_descriptor(file.descriptor()));
    if (!target ||
        vips_tiffsave_target(image, target.get(), "compression", VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE,
                             "predictor", VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL, nullptr) != 0)
        return takeVipsError();
    return Done{};
}

// Several looks at the pixels, which take at most a byte each.
Status writeGray(VipsImage* image, OutputFile& file)
{
    const VipsImagePtr held(vips_image_copy_memory(image));
    if (!held) return takeVipsError();
    if (!isBlackAndWhite(held.get())) return writeRows(held.get(), file);
    const auto bytes = smallestBlackAndWhite(held.get());
    return bytes ? file.append(*bytes) : Status(bytes.error());
}

Status encode(const EncodeRequest& request, OutputFile& file)
{
    const VipsImagePtr image = withResolution(request.image, resolutionOf(request.metadata));
    if (!image) return takeVipsError();
    const bool isGray = request.keepsModel && mayBeBlackAndWhite(image.get());
    if (auto status = isGray ? writeGray(image.get(), file) : writeRows(image.get(), file); !status)
        return status;
    const auto written = MappedFile::map(file.descriptor());
    if (!written) return written.error();
    return withTiffMetadata(written->bytes(), request.metadata, request.facts,
                            [&file](std::span<const std::byte> whole) { return file.rewrite(whole); });
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

void describe(int descriptor, VipsImage* image, Metadata& metadata, SourceFacts& facts)
{
    readContainer(descriptor, metadata);
    noteGrayForm(image, metadata.tiff);
    attachTiffColors(image, metadata);
    facts.series = SourceFacts::Series::pages;
    const TiffPages pages = tiffPages(descriptor);
    if (pages.count > 0) facts.pictures = pages.count;
    // What came out of the decoder may have more or fewer.
    if (pages.bits > 0) facts.bits = std::max(8, pages.bits);
}

// Rows go out as they come, but for bitmaps that may turn out to need no alpha. What is written comes back
// into memory when metadata is added to it.
std::int64_t encodingBytes(const EncodedShape& shape)
{
    return shape.pixels * (shape.pixelBytes == 4 ? 3 : 1) +
           (shape.keepsMetadata ? shape.pixels * shape.pixelBytes : 0);
}

constexpr FormatReader reader{.load = loadTiff, .describe = describe, .operation = "VipsForeignLoadTiff"};
constexpr FormatWriter writer{
    .encode = encode, .operation = "VipsForeignSaveTiff", .heldBytes = encodingBytes};

} // namespace

constinit const Codec tiffCodec{.format = tiffFormat, .reader = reader, .writer = writer};

} // namespace lumora
