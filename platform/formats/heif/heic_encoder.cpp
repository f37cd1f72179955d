// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heic_encoder.h"

#include "formats/codec_preparation.h"
#include "heif/heic_picture.h"
#include "heif/heic_quality.h"
#include "heif/heif_handles.h"
#include "heif/hevc_threads.h"
#include "system/freed_memory.h"

#include <libheif/heif.h>
#include <vips/vips.h>

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace lumora {
namespace {

using Encoder = std::unique_ptr<heif_encoder, HeifReleaser<heif_encoder_release>>;
using Options = std::unique_ptr<heif_encoding_options, HeifReleaser<heif_encoding_options_free>>;

using Parameter = std::pair<const char*, const char*>;

// The default search takes three times as long as this one for files of the same size and likeness; most of
// it looks for motion, which a still picture has not.
constexpr std::array stillPictures{Parameter{"preset", "ultrafast"}, Parameter{"x265:rdoq-level", "2"},
                                   Parameter{"x265:psy-rd", "0"}, Parameter{"x265:psy-rdoq", "0"}};
// What saves bytes at the same look and costs little time: smoothed edges of blocks, signs told by parity,
// and finer steps where the eye sees more.
constexpr std::array savings{Parameter{"x265:sao", "1"}, Parameter{"x265:signhide", "1"},
                             Parameter{"x265:aq-mode", "4"}, Parameter{"x265:aq-strength", "0.5"}};
// Colours bear coarser steps than brightness, the more so the more of them are stored.
constexpr std::array halfChromaSavings{Parameter{"x265:cbqpoffs", "2"}, Parameter{"x265:crqpoffs", "2"}};
constexpr std::array fullChromaSavings{Parameter{"x265:cbqpoffs", "6"}, Parameter{"x265:crqpoffs", "6"}};
// Coarser steps for fine detail. Not with all colours, about which decoders and this encoder then disagree,
// and not in the search among smaller blocks, where they save nothing but cost pictures that were JPEG files
// a fiftieth and more.
constexpr std::array coarseDetail{Parameter{"x265:scaling-list", "default"}};
// A search among smaller blocks takes more than twice the time, which nobody waits for where a picture is
// small.
constexpr std::array smallPictures{Parameter{"x265:min-cu-size", "8"}};
constexpr std::int64_t smallPicturePixels = 1 << 19;

std::int64_t pixelsOf(const heif_image* picture)
{
    return std::int64_t{heif_image_get_width(picture, heif_channel_Y)} *
           heif_image_get_height(picture, heif_channel_Y);
}

// An encoder that does not know a parameter does without it.
void prefer(heif_encoder* encoder, std::span<const Parameter> parameters)
{
    for (const auto& [name, value] : parameters)
        static_cast<void>(heif_encoder_set_parameter_string(encoder, name, value));
}

Encoder encoderFor(heif_context* context, const heif_image* picture, int quality)
{
    const bool hasFullChroma = heif_image_get_chroma_format(picture) == heif_chroma_444;
    heif_encoder* made = nullptr;
    checkHeif(heif_context_get_encoder_for_format(context, heif_compression_HEVC, &made));
    Encoder encoder(made);
    prefer(made, stillPictures);
    const bool isSmall = pixelsOf(picture) <= smallPicturePixels;
    if (isSmall) prefer(made, smallPictures);
    constexpr int nothingSaved = 100;
    if (quality < nothingSaved) {
        prefer(made, savings);
        prefer(made, hasFullChroma ? std::span<const Parameter>(fullChromaSavings) : halfChromaSavings);
        if (!hasFullChroma && !isSmall) prefer(made, coarseDetail);
    }
    checkHeif(heif_encoder_set_parameter_string(made, "chroma", hasFullChroma ? "444" : "420"));
    checkHeif(heif_encoder_set_lossy_quality(made, encoderQualityOf(quality)));
    return encoder;
}

void addMetadata(heif_context* context, heif_image_handle* handle, const EncodeRequest& request)
{
    const std::string exif = exifBlock(request.metadata, request.facts);
    const std::string xmp = xmpPacket(request.metadata, request.facts);
    if (!exif.empty())
        checkHeif(
            heif_context_add_exif_metadata(context, handle, exif.data(), static_cast<int>(exif.size())));
    if (!xmp.empty())
        checkHeif(heif_context_add_XMP_metadata(context, handle, xmp.data(), static_cast<int>(xmp.size())));
}

struct Output
{
    OutputFile& file;
    std::optional<Error> error;
};

heif_error appendToFile(heif_context*, const void* data, size_t size, void* output)
{
    auto& [file, error] = *static_cast<Output*>(output);
    const auto status = file.append({static_cast<const std::byte*>(data), size});
    if (status) return {heif_error_Ok, heif_suberror_Unspecified, ""};
    error = status.error();
    return {heif_error_Encoding_error, heif_suberror_Cannot_write_output_data, ""};
}

void encodeTo(const EncodeRequest& request, OutputFile& file)
{
    fillNewMemory(newMemoryFill);
    const HeifContext context(heif_context_alloc());
    HeifPicture picture = heicPictureOf(request.image, request.quality >= fullChromaQuality);
    const Encoder encoder = encoderFor(context.get(), picture.get(), request.quality);
    const Options options(heif_encoding_options_alloc());
    options->save_alpha_channel = 1;
    heif_image_handle* made = nullptr;
    checkHeif(heif_context_encode_image(context.get(), picture.get(), encoder.get(), options.get(), &made));
    const HeifHandle handle(made);
    picture.reset();
    addMetadata(context.get(), made, request);

    Output output{file, std::nullopt};
    heif_writer writer{1, appendToFile};
    const heif_error written = heif_context_write(context.get(), &writer, &output);
    if (output.error) throw *output.error;
    checkHeif(written);
}

} // namespace

bool hasHevcEncoder()
{
    return heif_have_encoder_for_format(heif_compression_HEVC) != 0;
}

void prepareHevcEncoder()
{
    constexpr int edge = 64;
    if (!hasHevcEncoder() || !findHevcThreads()) return;
    VipsImage* black = nullptr;
    if (vips_black(&black, edge, edge, "bands", 3, nullptr) != 0) return;
    const VipsImagePtr image(black);
    try {
        const HeifContext context(heif_context_alloc());
        const HeifPicture picture = heicPictureOf(black, false);
        const Encoder encoder = encoderFor(context.get(), picture.get(), 1);
        heif_image_handle* made = nullptr;
        checkHeif(heif_context_encode_image(context.get(), picture.get(), encoder.get(), nullptr, &made));
        const HeifHandle handle(made);
    } catch (const Error&) {
        takeVipsError();
    }
}

Status encodeHeic(const EncodeRequest& request, OutputFile& file)
try {
    if (auto status = findHevcThreads(); !status) return status;
    encodeTo(request, file);
    return Done{};
} catch (const Error& error) {
    return error;
}

} // namespace lumora
