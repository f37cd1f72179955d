// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output_plan.h"

#include "engine/output_naming.h"
#include "formats/image_destination.h"
#include "records/errors.h"
#include "system/file_services.h"
#include "system/paths.h"

namespace lumora::ImageOptimizer {
namespace {

std::filesystem::path numbered(const std::filesystem::path& path, int number)
{
    return path.parent_path() /
           (path.stem().native() + " " + std::to_string(number) + path.extension().native());
}

// Links give the input further paths that names alone cannot tell from another file.
std::filesystem::path outputPath(const std::filesystem::path& input, const ImageSource& source,
                                 const OptimizerSettings& settings)
{
    std::filesystem::path output = outputURL(input, source.typeIdentifier(), settings);
    if (!isSameFile(output, input)) return output;
    const auto besides = outputPathBesideSource(input, source.typeIdentifier(), settings);
    output = besides;
    for (int number = 2; isSameFile(output, input); ++number)
        output = numbered(besides, number);
    return output;
}

// The encoder of WebP stands outside the list of writable types.
std::string outputType(const ImageSource& source, const OptimizerSettings& settings)
{
    if (isWebP(settings.outputFormat)) return std::string(*utiIdentifier(settings.outputFormat));
    return outputUTI(source.typeIdentifier(), settings, ImageDestination::writableTypeIdentifiers());
}

} // namespace

OutputPlan plan(const std::filesystem::path& input, const ImageSource& source,
                const OptimizerSettings& settings)
{
    std::filesystem::path path = outputPath(input, source, settings);
    if (const auto status = checkReplaceable(path); !status) throw PlatformError(status.error().description);
    const bool isTaken = fileExists(path);
    return {std::move(path), isTaken, outputType(source, settings)};
}

bool isSameFile(const std::filesystem::path& a, const std::filesystem::path& b)
{
    std::error_code missing;
    return standardized(a) == standardized(b) || std::filesystem::equivalent(a, b, missing);
}

} // namespace lumora::ImageOptimizer
