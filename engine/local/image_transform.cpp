// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/image_transform.h"

#include "pixels/drawing.h"
#include "records/errors.h"

#include <algorithm>

namespace lumora::ImageOptimizer {
namespace {

double factorFor(std::int64_t edge, std::int64_t limit)
{
    return limit < edge ? static_cast<double>(limit) / static_cast<double>(edge) : 1.0;
}

// Truncated, not rounded: a product of 1599.9999 is 1599.
std::int64_t reduced(std::int64_t edge, double factor)
{
    return std::max<std::int64_t>(1, static_cast<std::int64_t>(static_cast<double>(edge) * factor));
}

ColorSpace targetColorSpace(const OptimizerSettings& settings)
{
    if (settings.optimizeColorForSharing) return ColorSpace::sRGB;
    return settings.removeColorManagement ? ColorSpace::deviceRGB : ColorSpace::own;
}

} // namespace

Image orientedImage(const ImageSource& source, const Image& fallback)
{
    return fallback.withPendingOrientation(source.orientation());
}

double scaleFactor(std::int64_t width, std::int64_t height, const OptimizerSettings& settings)
{
    const std::int64_t limit = std::max<std::int64_t>(1, settings.maximumPixels);
    switch (settings.resizeMode) {
    case ResizeMode::maxWidth:
        return factorFor(width, limit);
    case ResizeMode::maxHeight:
        return factorFor(height, limit);
    case ResizeMode::longestEdge:
        return factorFor(std::max(width, height), limit);
    case ResizeMode::none:
        break;
    }
    return 1.0;
}

bool isRedrawn(double factor, const OptimizerSettings& settings)
{
    return settings.optimizeColorForSharing || settings.removeColorManagement || factor < 1.0;
}

Image transformedImage(const Image& image, const OptimizerSettings& settings)
{
    const double factor = scaleFactor(image.width(), image.height(), settings);
    if (!isRedrawn(factor, settings)) return image;

    DrawRequest request{image.width(), image.height(), targetColorSpace(settings)};
    if (factor < 1.0) {
        request.width = reduced(image.width(), factor);
        request.height = reduced(image.height(), factor);
    }
    auto drawn = draw(image, request);
    if (!drawn && drawn.error().cause == Error::Cause::inconvertible) return image;
    if (!drawn && drawn.error().cause == Error::Cause::memory) throw PlatformError::notEnoughMemory();
    if (!drawn) throw ImageOptimizerError::unreadableImage();
    return *drawn;
}

} // namespace lumora::ImageOptimizer
