// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/webp_encoder.h"

#include "records/errors.h"
#include "system/bundle.h"

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace lumora::ImageOptimizer {
namespace {

std::string qualityArgument(double quality)
{
    // 2^63 is the first double beyond the range.
    if (!std::isfinite(quality) || quality >= 9223372036854775808.0 || quality < -9223372036854775808.0) {
        std::fputs("lumora: the quality is not a representable number\n", stderr);
        std::abort();
    }
    return std::to_string(static_cast<std::int64_t>(quality));
}

ImageOptimizerError errorOf(const CwebpError& error, const std::filesystem::path& output)
{
    switch (error.step) {
    case CwebpError::Step::drawing:
        return ImageOptimizerError::cannotCreateDestination(error.file);
    case CwebpError::Step::writingPpm:
        return ImageOptimizerError::cannotFinalize(error.file, error.reason);
    case CwebpError::Step::launching:
        return ImageOptimizerError::unsupportedFormat("WebP encoder at " + error.file.string() +
                                                      " could not be launched: " + error.reason);
    case CwebpError::Step::encoding:
        return ImageOptimizerError::cannotFinalize(output, error.reason);
    case CwebpError::Step::copying:
        break;
    }
    return ImageOptimizerError::cannotWriteOutput(output, error.reason);
}

} // namespace

std::optional<std::filesystem::path> bundledCWebPExecutableURL()
{
    return findCwebp(mainBundlePath());
}

std::string_view webPMetadataArgument(const OptimizerSettings& settings)
{
    if (settings.removeMetadata) return settings.removeColorManagement ? "none" : "icc";
    return settings.removeColorManagement ? "exif,xmp" : "all";
}

std::vector<std::string> cwebpOptions(const OptimizerSettings& settings)
{
    std::vector<std::string> options{"-quiet", "-metadata", std::string(webPMetadataArgument(settings))};
    if (settings.usesLossyCompression()) {
        options.insert(options.end(), {"-q", qualityArgument(settings.quality)});
    } else {
        options.emplace_back("-lossless");
    }
    return options;
}

AtomicFile encodeWebPWithCWebP(const PpmMaker& makePpm, const std::filesystem::path& output,
                               const OptimizerSettings& settings, const std::stop_token& stop)
{
    const auto encoder = bundledCWebPExecutableURL();
    if (!encoder) throw ImageOptimizerError::unsupportedFormat("WebP support is not bundled in this build.");
    auto encoded = encodeWithCwebp(*encoder, makePpm, output, cwebpOptions(settings), stop);
    if (!encoded) throw errorOf(encoded.error(), output);
    return std::move(*encoded);
}

} // namespace lumora::ImageOptimizer
