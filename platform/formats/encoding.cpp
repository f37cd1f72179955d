// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "encoding.h"

#include "pixels/color_profile.h"
#include "pixels/image_colors.h"
#include "pixels/storable_image.h"

#include <vips/vips.h>

#include <algorithm>
#include <new>

namespace lumora {
namespace {

PictureFacts factsOf(VipsImage* image, const Format& format)
{
    const bool isJpegColor = &format == &jpegFormat && vips_image_get_bands(image) == 3;
    return {vips_image_get_width(image), vips_image_get_height(image), isSrgb(image),
            profileDescription(attachedProfile(image)), isJpegColor};
}

bool fits(const Image& image, const StorageLimits& limits)
{
    return limits.longestEdge == 0 || std::max(image.width(), image.height()) <= limits.longestEdge;
}

} // namespace

Status encodeImage(const Format& format, const Image& image, int quality, const Metadata& metadata,
                   OutputFile& file)
try {
    if (format.writtenBy != WrittenBy::codec) return Error{"no encoder for this type"};
    if (!fits(image, format.limits))
        return Error{"more than " + std::to_string(format.limits.longestEdge) + " pixels along an edge"};
    allowOperations();
    const auto storable = storableImage(image, format.limits);
    if (!storable) return storable.error();
    auto status = codecOf(format).writer->encode(
        {storable->get(), quality, !image.alphaIsPremultiplied(), metadata, factsOf(storable->get(), format)},
        file);
    if (!status && status.error().cause == Error::Cause::memory) return outOfMemory();
    return status;
} catch (const std::bad_alloc&) {
    return outOfMemory();
}

} // namespace lumora
