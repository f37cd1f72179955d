// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/lossless_copy.h"

#include "formats/file_copy.h"
#include "metadata/metadata_parts.h"
#include "pixels/image_colors.h"

#include <fcntl.h>

#include <algorithm>

namespace lumora::ImageOptimizer {
namespace {

bool wantsOtherColors(const OptimizerSettings& settings)
{
    return settings.optimizeColorForSharing || settings.removeColorManagement;
}

// Some viewers heed a turn that the image library does not know of.
bool saysToTurn(const Metadata& metadata)
{
    constexpr std::string_view upright("\1\0", 2);
    return std::ranges::any_of(metadata.tiff, [&](const MetadataField& field) {
        return field.key == "Exif.Image.Orientation" && field.bytes != upright;
    });
}

// Bright displays show more of a picture with a gain map than an output has.
bool showsTheSame(const ImageSource& source, const ImageSource& copy, const OptimizerSettings& settings)
{
    const Image before = source.image();
    const Image after = copy.image();
    SourceFacts facts = source.facts();
    facts.hasGainMap = false;
    return source.typeIdentifier() == copy.typeIdentifier() && before.width() == after.width() &&
           before.height() == after.height() && copy.facts() == facts && copy.orientation() == 1 &&
           !saysToTurn(copy.metadata()) &&
           (wantsOtherColors(settings) ? isSrgb(after) : haveSameProfile(before, after));
}

bool saysTheSame(const ImageSource& copy, const OptimizerSettings& settings)
{
    return !settings.removeMetadata || missingParts(copy.metadata(), {}).empty();
}

} // namespace

Result<bool> writeLosslessCopy(const ImageSource& source, int file, const OptimizerSettings& settings,
                               OutputFile& output)
{
    if (wantsOtherColors(settings) && !isSrgb(source.image())) return false;
    auto isCopied =
        copyFile(file, source.typeIdentifier().value_or(std::string()),
                 {.metadata = settings.removeMetadata, .profile = settings.removeColorManagement}, output);
    if (!isCopied || !*isCopied) return isCopied;
    const auto copy = ImageSource::open(FileDescriptor(::fcntl(output.descriptor(), F_DUPFD_CLOEXEC, 0)));
    return copy && showsTheSame(source, *copy, settings) && saysTheSame(*copy, settings);
}

} // namespace lumora::ImageOptimizer
