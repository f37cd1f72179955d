// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_source.h"

#include "formats/format.h"
#include "image_loaders.h"
#include "metadata/metadata_blocks.h"
#include "pixels/color_profile.h"
#include "pixels/stored_form.h"
#include "pixels/vips_library.h"
#include "system/regular_file.h"

#include <vips/vips.h>

#include <unistd.h>

#include <array>
#include <cstring>
#include <utility>

namespace lumora {
namespace {

const ImageType* typeOf(int descriptor)
{
    std::array<std::byte, sniffLength> head{};
    const ssize_t count = pread(descriptor, head.data(), head.size(), 0);
    if (count <= 0) return nullptr;
    return sniffImageType(std::span(head).first(static_cast<std::size_t>(count)));
}

// The brands at the head of a HEIF only claim what the picture is coded with; the decoder knows.
std::string_view refinedIdentifier(const ImageType& type, VipsImage* image)
{
    const char* codec = nullptr;
    if (!vips_image_get_typeof(image, "heif-compression") ||
        vips_image_get_string(image, "heif-compression", &codec) != 0) {
        return type.identifier;
    }
    if (std::strcmp(codec, "hevc") == 0) return "public.heic";
    return std::strcmp(codec, "av1") == 0 ? "public.avif" : "public.heif";
}

bool isTooLarge(const VipsImage* image)
{
    return std::int64_t{vips_image_get_width(image)} * vips_image_get_height(image) > maximumDecodedPixels;
}

std::string_view colorModelName(const VipsImage* image)
{
    switch (vips_image_guess_interpretation(image)) {
    case VIPS_INTERPRETATION_B_W:
    case VIPS_INTERPRETATION_GREY16:
        return "Gray";
    case VIPS_INTERPRETATION_CMYK:
        return "CMYK";
    case VIPS_INTERPRETATION_LAB:
    case VIPS_INTERPRETATION_LABS:
    case VIPS_INTERPRETATION_LABQ:
        return "Lab";
    default:
        return "RGB";
    }
}

ImageProperties describe(VipsImage* image, Orientation orientation, ImageProperties properties)
{
    properties[PropertyKey::pixelWidth] = std::int64_t{vips_image_get_width(image)};
    properties[PropertyKey::pixelHeight] = std::int64_t{vips_image_get_height(image)};
    properties[PropertyKey::depth] =
        static_cast<std::int64_t>(8 * vips_format_sizeof(vips_image_get_format(image)));
    properties[PropertyKey::colorModel] = std::string(colorModelName(image));
    properties[PropertyKey::orientation] = std::int64_t{orientation};
    if (std::string name = profileDescription(attachedProfile(image)); !name.empty())
        properties[PropertyKey::profileName] = std::move(name);
    return properties;
}

ReducedDecoding reducedDecodingOf(FileDescriptor file)
{
    return [file = std::make_shared<FileDescriptor>(std::move(file))](int divisor) -> Result<VipsImage*> {
        auto image = loadReducedJpeg(divisor, file->get());
        if (!image) return image.error();
        return image->release();
    };
}

} // namespace

ImageSource::ImageSource(std::string typeIdentifier, Image image, Orientation orientation,
                         ImageProperties properties)
    : m_typeIdentifier(std::move(typeIdentifier)), m_image(std::move(image)), m_orientation(orientation),
      m_properties(std::move(properties))
{
}

Result<ImageSource> ImageSource::open(const std::filesystem::path& url)
{
    auto file = openRegularFile(url);
    if (!file) return file.error();
    const ImageType* type = typeOf(file->get());
    if (!type || !type->readable) return Error{"not a readable image type"};
    auto loaded = loadFirstPicture(type->identifier, file->get());
    if (!loaded) return loaded.error();
    VipsImage* image = loaded->get();
    if (isTooLarge(image)) {
        return Error{"more than " + std::to_string(maximumDecodedPixels / 1'000'000) + " megapixels"};
    }

    const Orientation orientation = vips_image_get_orientation(image);
    const std::string identifier(refinedIdentifier(*type, image));
    ImageProperties properties = describe(image, orientation, readMetadata(image, identifier, url));
    if (identifier == "public.tiff") noteFormOfTiff(image, properties);
    Image picture(loaded->release(), 1, ImageState::pending);
    if (identifier == "public.jpeg")
        picture = picture.withReducedDecoding(reducedDecodingOf(std::move(*file)));
    return ImageSource(identifier, std::move(picture), orientation, std::move(properties));
}

} // namespace lumora
