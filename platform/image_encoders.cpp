// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/image_encoders.h"

#include "platform/storable_image.h"
#include "platform/vips_library.h"

#include <libheif/heif.h>
#include <vips/vips.h>

#include <algorithm>
#include <array>

namespace lumora {
namespace {

using Save = int (*)(VipsImage* image, int quality, void** bytes, std::size_t* size);

// Below this the eye forgives half the colour resolution; from here on people ask for every edge.
constexpr int fullChromaQuality = 90;

int saveJpeg(VipsImage* image, int quality, void** bytes, std::size_t* size)
{
    return vips_jpegsave_buffer(
        image, bytes, size, "Q", quality, "optimize_coding", TRUE, "interlace", TRUE, "subsample_mode",
        quality < fullChromaQuality ? VIPS_FOREIGN_SUBSAMPLE_ON : VIPS_FOREIGN_SUBSAMPLE_OFF, nullptr);
}

int savePng(VipsImage* image, int, void** bytes, std::size_t* size)
{
    constexpr int strongest = 9;
    return vips_pngsave_buffer(image, bytes, size, "compression", strongest, "filter",
                               VIPS_FOREIGN_PNG_FILTER_ALL, nullptr);
}

int saveHeic(VipsImage* image, int quality, void** bytes, std::size_t* size)
{
    return vips_heifsave_buffer(image, bytes, size, "Q", quality, "compression",
                                VIPS_FOREIGN_HEIF_COMPRESSION_HEVC, nullptr);
}

int saveTiff(VipsImage* image, int, void** bytes, std::size_t* size)
{
    return vips_tiffsave_buffer(image, bytes, size, "compression", VIPS_FOREIGN_TIFF_COMPRESSION_DEFLATE,
                                "predictor", VIPS_FOREIGN_TIFF_PREDICTOR_HORIZONTAL, nullptr);
}

int saveGif(VipsImage* image, int, void** bytes, std::size_t* size)
{
    return vips_gifsave_buffer(image, bytes, size, "dither", 1.0, "effort", 7, nullptr);
}

struct Encoder
{
    std::string_view typeIdentifier;
    StorageLimits limits;
    Save save;
};

constexpr std::array<Encoder, 5> encoders{{
    {"public.jpeg",
     {.holdsSixteenBits = false, .holdsInk = true, .holdsAlpha = false, .holdsAnyModel = false},
     saveJpeg},
    {"public.png",
     {.holdsSixteenBits = true, .holdsInk = false, .holdsAlpha = true, .holdsAnyModel = false},
     savePng},
    {"public.heic",
     {.holdsSixteenBits = false, .holdsInk = false, .holdsAlpha = true, .holdsAnyModel = false},
     saveHeic},
    {"public.tiff",
     {.holdsSixteenBits = true, .holdsInk = true, .holdsAlpha = true, .holdsAnyModel = true},
     saveTiff},
    {"com.compuserve.gif",
     {.holdsSixteenBits = false, .holdsInk = false, .holdsAlpha = true, .holdsAnyModel = false},
     saveGif},
}};

bool isAvailable(const Encoder& encoder)
{
    return encoder.typeIdentifier != "public.heic" ||
           heif_have_encoder_for_format(heif_compression_HEVC) != 0;
}

std::vector<std::byte> takeBytes(void* bytes, std::size_t size)
{
    const auto* first = static_cast<const std::byte*>(bytes);
    std::vector<std::byte> copy(first, first + size);
    g_free(bytes);
    return copy;
}

} // namespace

std::vector<std::string> encodableTypeIdentifiers()
{
    std::vector<std::string> identifiers;
    for (const Encoder& encoder : encoders) {
        if (isAvailable(encoder)) identifiers.emplace_back(encoder.typeIdentifier);
    }
    return identifiers;
}

Result<std::vector<std::byte>> encodeImage(std::string_view typeIdentifier, const Image& image, int quality)
{
    const auto encoder = std::ranges::find(encoders, typeIdentifier, &Encoder::typeIdentifier);
    if (encoder == encoders.end()) return Error{"no encoder for this type"};
    const auto storable = storableImage(image, encoder->limits);
    if (!storable) return storable.error();

    void* bytes = nullptr;
    std::size_t size = 0;
    if (encoder->save(storable->get(), quality, &bytes, &size) != 0) return takeVipsError();
    return takeBytes(bytes, size);
}

} // namespace lumora
