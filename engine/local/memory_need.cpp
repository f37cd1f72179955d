// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/memory_need.h"

#include "engine/local/image_transform.h"
#include "formats/encoding_memory.h"

#include <cmath>
#include <string>

namespace lumora::ImageOptimizer {
namespace {

// Rows on their way: some strips of them in several forms.
std::int64_t rowsOnTheirWay(const Image& image)
{
    constexpr std::int64_t bytesAColumn = std::int64_t{64} * 32;
    return image.width() * bytesAColumn;
}

std::int64_t pixelsOf(const Image& image, double factor)
{
    return static_cast<std::int64_t>(static_cast<double>(image.width()) * factor *
                                     static_cast<double>(image.height()) * factor);
}

std::string outputType(const ImageSource& source, const OptimizerSettings& settings)
{
    if (const auto chosen = utiIdentifier(settings.outputFormat)) return std::string(*chosen);
    return source.typeIdentifier().value_or(std::string());
}

} // namespace

std::int64_t memoryNeed(const ImageSource& source, const OptimizerSettings& settings)
{
    constexpr int redrawnBytes = 4;
    constexpr Orientation firstHeld = 3;
    const Image image = orientedImage(source, source.image());
    const double factor = scaleFactor(image.width(), image.height(), settings);
    const int pixelBytes = isRedrawn(factor, settings) ? redrawnBytes : image.storedPixelBytes();
    const std::int64_t pixels = pixelsOf(image, factor);
    const std::int64_t turning = source.orientation() >= firstHeld ? pixels * pixelBytes : 0;
    const int quality = static_cast<int>(std::lround(settings.normalizedQuality() * 100));
    return rowsOnTheirWay(image) + source.heldBytes() + turning +
           encodingMemory(outputType(source, settings),
                          {pixels, pixelBytes, quality, !settings.removeMetadata});
}

} // namespace lumora::ImageOptimizer
