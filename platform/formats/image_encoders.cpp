// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "image_encoders.h"

#include "encoded_bytes.h"
#include "pixels/color_conversion.h"
#include "pixels/color_profile.h"
#include "pixels/storable_image.h"

#include <algorithm>
#include <array>
#include <new>

namespace lumora {
namespace {

struct Encoder
{
    std::string_view typeIdentifier;
    StorageLimits limits;
    Result<Bytes> (*encode)(const EncodeRequest& request);
};

constexpr StorageLimits ink8{.holdsSixteenBits = false,
                             .holdsGray = true,
                             .holdsInk = true,
                             .holdsAlpha = false,
                             .holdsAnyModel = false};
constexpr StorageLimits rgb8{.holdsSixteenBits = false,
                             .holdsGray = false,
                             .holdsInk = false,
                             .holdsAlpha = true,
                             .holdsAnyModel = false};
constexpr StorageLimits alpha8{.holdsSixteenBits = false,
                               .holdsGray = true,
                               .holdsInk = false,
                               .holdsAlpha = true,
                               .holdsAnyModel = false};
constexpr StorageLimits alpha16{.holdsSixteenBits = true,
                                .holdsGray = true,
                                .holdsInk = false,
                                .holdsAlpha = true,
                                .holdsAnyModel = false};
constexpr StorageLimits anything{
    .holdsSixteenBits = true, .holdsGray = true, .holdsInk = true, .holdsAlpha = true, .holdsAnyModel = true};

constexpr std::array<Encoder, 6> encoders{{
    {"public.jpeg", ink8, encodeJpeg},
    {"public.png", alpha16, encodePng},
    {"public.heic", rgb8, encodeHeic},
    {"public.tiff", anything, encodeTiff},
    {"com.compuserve.gif", alpha8, encodeGif},
    {"com.microsoft.bmp", alpha8, encodeBmpFile},
}};

bool isAvailable(const Encoder& encoder)
{
    return encoder.encode != encodeHeic || canEncodeHeic();
}

// By what the profile does to colours: sRGB has many wordings.
bool isSrgb(VipsImage* image, ProfileBytes profile)
{
    return vips_image_guess_interpretation(image) != VIPS_INTERPRETATION_CMYK &&
           ColorConversion::toSrgb({ColorModel::rgb, false}, profile).isIdentity();
}

PictureFacts factsOf(VipsImage* image, std::string_view typeIdentifier)
{
    const bool isJpegColor = typeIdentifier == "public.jpeg" && vips_image_get_bands(image) == 3;
    const ProfileBytes profile = attachedProfile(image);
    return {vips_image_get_width(image), vips_image_get_height(image), isSrgb(image, profile),
            profileDescription(profile), isJpegColor};
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

Result<Bytes> encodeImage(std::string_view typeIdentifier, const Image& image, int quality,
                          const ImageProperties& properties)
try {
    const auto encoder = std::ranges::find(encoders, typeIdentifier, &Encoder::typeIdentifier);
    if (encoder == encoders.end()) return Error{"no encoder for this type"};
    const auto storable = storableImage(image, encoder->limits);
    if (!storable) return storable.error();
    const MetadataBlobs metadata = encodeMetadata(properties, factsOf(storable->get(), typeIdentifier));
    return encoder->encode({storable->get(), quality, !image.alphaIsPremultiplied(), metadata});
} catch (const std::bad_alloc&) {
    return Error{"not enough memory"};
}

} // namespace lumora
