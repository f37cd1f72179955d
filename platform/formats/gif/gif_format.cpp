// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A picture of few colours is written with exactly those; the image library would reserve one of the 256 for
// transparency and mix two others. A picture of more goes through the image library, which chooses the
// palette and dithers.
#include "encoded_bytes.h"
#include "format_io.h"
#include "gif/gif_comments.h"
#include "gif/gif_data.h"
#include "indexed_pixels.h"
#include "metadata/remarks.h"
#include "pixels/color_conversion.h"
#include "system/regular_file.h"
#include "vips_loading.h"

#include <cgif.h>

#include <algorithm>
#include <array>
#include <new>
#include <optional>
#include <string>

namespace lumora {
namespace {

using namespace std::string_view_literals;

std::optional<IndexedPixels> exactColors(VipsImage* image)
{
    const int longestEdge = gifFormat.limits.longestEdge;
    if (vips_image_get_width(image) > longestEdge || vips_image_get_height(image) > longestEdge)
        return std::nullopt;
    const auto components = componentsOf(image);
    if (!components) return std::nullopt;
    auto colors = indexed(components->bytes(), vips_image_get_bands(image));
    // Pixels are shown or not, nothing between, and one colour stands for those that are not.
    const auto isMixed = [](const PaletteColor& c) { return c.alpha != 0 && c.alpha != 255; };
    const auto isHidden = [](const PaletteColor& c) { return c.alpha == 0; };
    if (!colors || std::ranges::any_of(colors->palette, isMixed) ||
        std::ranges::count_if(colors->palette, isHidden) > 1)
        return std::nullopt;
    return colors;
}

struct Sink
{
    Bytes bytes;
    bool isOutOfMemory = false;
};

// No exception may pass through the library: it is C, and would leave its memory behind.
int appendTo(void* context, const std::uint8_t* data, std::size_t size) noexcept
{
    auto& sink = *static_cast<Sink*>(context);
    try {
        const auto more = std::as_bytes(std::span(data, size));
        sink.bytes.insert(sink.bytes.end(), more.begin(), more.end());
    } catch (const std::bad_alloc&) {
        sink.isOutOfMemory = true;
    }
    return sink.isOutOfMemory ? 1 : 0;
}

Result<Bytes> encodeIndexed(VipsImage* image, IndexedPixels& colors)
{
    std::vector<std::uint8_t> palette;
    for (const PaletteColor& c : colors.palette)
        palette.insert(palette.end(), {c.red, c.green, c.blue});
    Sink sink;
    CGIF_Config config{};
    config.pGlobalPalette = palette.data();
    config.numGlobalPaletteEntries = static_cast<std::uint16_t>(colors.palette.size());
    config.width = static_cast<std::uint16_t>(vips_image_get_width(image));
    config.height = static_cast<std::uint16_t>(vips_image_get_height(image));
    config.pWriteFn = appendTo;
    config.pContext = &sink;
    CGIF_FrameConfig frame{};
    if (colors.palette.front().alpha == 0) { // the palette begins with what is not opaque
        // The library gives only the frames of an animation the block that names the transparent index.
        config.attrFlags = CGIF_ATTR_IS_ANIMATED | CGIF_ATTR_NO_LOOP;
        frame.attrFlags = CGIF_FRAME_ATTR_HAS_ALPHA;
        frame.transIndex = 0;
    }
    frame.pImageData = colors.indices.data();

    CGIF* const gif = cgif_newgif(&config);
    if (!gif) return outOfMemory();
    const bool isAdded = cgif_addframe(gif, &frame) == CGIF_OK;
    const bool isClosed = cgif_close(gif) == CGIF_OK;
    if (sink.isOutOfMemory) return outOfMemory();
    if (!isAdded || !isClosed) return Error{"the picture cannot be stored as GIF"};
    return std::move(sink.bytes);
}

Result<Bytes> encodeDithered(VipsImage* image)
{
    constexpr double fullDither = 1.0;
    constexpr int thoroughPalette = 7;
    constexpr int playedOnce = 1; // anything else adds a block that only an animation has
    vips_image_set_int(image, "loop", playedOnce);
    void* buffer = nullptr;
    std::size_t size = 0;
    if (vips_gifsave_buffer(image, &buffer, &size, "dither", fullDither, "effort", thoroughPalette,
                            nullptr) != 0) {
        return takeVipsError();
    }
    return takeBytes(buffer, size);
}

// Its rows are looked at more than once.
Status encode(const EncodeRequest& request, OutputFile& file)
{
    const VipsImagePtr image(vips_image_copy_memory(request.image));
    if (!image) return takeVipsError();
    auto colors = exactColors(image.get());
    auto bytes = colors ? encodeIndexed(image.get(), *colors) : encodeDithered(image.get());
    if (!bytes) return bytes.error();
    return file.append(withGifMetadata(std::move(*bytes), remarksOf(request.metadata),
                                       xmpPacket(request.metadata, request.facts)));
}

constexpr std::size_t largestFile = std::size_t{1} << 26U;

Result<VipsImagePtr> load(int descriptor)
{
    if (const auto bytes = readAll(descriptor, largestFile); bytes && !hasWholeGifPicture(*bytes))
        return Error{"damaged GIF"};
    return loadStrictly(vips_gifload_source, descriptor);
}

void attachProfile(VipsImage* image, const std::string& profile)
{
    const auto model = colorModelOf(image);
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): characters as bytes
    const ProfileBytes bytes(reinterpret_cast<const std::uint8_t*>(profile.data()), profile.size());
    if (model && describes(bytes, *model))
        vips_image_set_blob_copy(image, VIPS_META_ICC_NAME, bytes.data(), bytes.size());
}

void describe(int descriptor, VipsImage* image, Metadata& metadata, SourceFacts& facts)
{
    std::string xmp;
    if (const auto bytes = readAll(descriptor, largestFile)) {
        xmp = gifXmp(*bytes);
        metadata.gifComments = gifComments(*bytes);
        attachProfile(image, gifProfile(*bytes));
    }
    readAttachedMetadata(image, metadata);
    if (!xmp.empty()) metadata.xmp = std::move(xmp);
    facts.series = SourceFacts::Series::frames;
}

std::int64_t decodingBytes(VipsImage* image)
{
    return 2 * wholePicture(image);
}

// The components, the codec's own copy of them, and indices.
std::int64_t encodingBytes(const EncodedShape& shape)
{
    return shape.pixels * (shape.pixelBytes + 4 + 2);
}

constexpr FormatReader reader{.load = load,
                              .describe = describe,

                              .operation = "VipsForeignLoadNsgif",
                              .heldBytes = decodingBytes};
constexpr FormatWriter writer{
    .encode = encode, .operation = "VipsForeignSaveCgif", .heldBytes = encodingBytes};

} // namespace

constinit const Codec gifCodec{.format = gifFormat, .reader = reader, .writer = writer};

} // namespace lumora
