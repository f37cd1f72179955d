// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_source.h"

#include "format_io.h"
#include "pixels/color_profile.h"
#include "system/freed_memory.h"
#include "system/regular_file.h"

#include <unistd.h>
#include <vips/vips.h>

#include <algorithm>
#include <new>
#include <utility>

namespace lumora {
namespace {

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

int bitsOf(VipsImage* image)
{
    constexpr int fewest = 8;
    return std::max(fewest, static_cast<int>(8 * vips_format_sizeof(vips_image_get_format(image))));
}

// As far as the image library knows.
SourceFacts factsOf(VipsImage* image)
{
    SourceFacts facts;
    facts.pictures = vips_image_get_n_pages(image);
    facts.bits = bitsOf(image);
    facts.hasAlpha = vips_image_hasalpha(image) != 0;
    return facts;
}

Image pictureOf(VipsImagePtr image, const FormatReader& reader, FileDescriptor file)
{
    Image picture(image.release(), 1, ImageState::pending);
    if (!reader.loadReduced) return picture;
    return picture.withReducedDecoding(
        [load = reader.loadReduced,
         file = std::make_shared<FileDescriptor>(std::move(file))](int divisor) -> Result<VipsImage*> {
            auto reduced = load(divisor, file->get());
            if (!reduced) return reduced.error();
            return reduced->release();
        });
}

} // namespace

ImageSource::ImageSource(std::string typeIdentifier, Image image, Orientation orientation, Metadata metadata,
                         SourceFacts facts, std::int64_t heldBytes)
    : m_typeIdentifier(std::move(typeIdentifier)), m_image(std::move(image)), m_orientation(orientation),
      m_metadata(std::move(metadata)), m_facts(facts), m_heldBytes(heldBytes)
{
}

Result<ImageSource> ImageSource::open(const std::filesystem::path& path)
{
    auto file = openRegularFile(path);
    if (!file) return file.error();
    return open(std::move(*file));
}

Result<ImageSource> ImageSource::open(FileDescriptor file)
try {
    if (::lseek(file.get(), 0, SEEK_SET) != 0) return Error{"not a file that can be read again"};
    const Format* const format = formatOfFile(file.get());
    if (!format) return Error{"not a readable image type"};
    allowOperations();
    const FormatReader& reader = codecOf(*format).reader;
    fillNewMemory(reader.leavesHoles ? std::optional(newMemoryFill) : std::nullopt);
    auto loaded = reader.load(file.get());
    if (!loaded) return loaded.error();
    VipsImage* image = loaded->get();
    if (isTooLarge(image)) {
        return Error{"more than " + std::to_string(maximumDecodedPixels / 1'000'000) + " megapixels"};
    }
    Metadata metadata;
    SourceFacts facts = factsOf(image);
    reader.describe(file.get(), image, metadata, facts);
    const Orientation orientation = vips_image_get_orientation(image);
    metadata.orientation = orientation;
    metadata.colorModel = colorModelName(image);
    metadata.profileName = profileDescription(attachedProfile(image));
    const std::int64_t heldBytes = reader.heldBytes ? reader.heldBytes(image) : 0;
    return ImageSource(std::string(format->identifier),
                       pictureOf(std::move(*loaded), reader, std::move(file)), orientation,
                       std::move(metadata), facts, heldBytes);
} catch (const std::bad_alloc&) {
    return outOfMemory();
}

} // namespace lumora
