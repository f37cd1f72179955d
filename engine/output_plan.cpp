// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/output_plan.h"

#include "engine/output_naming.h"
#include "engine/output_path.h"
#include "records/errors.h"
#include "system/file_services.h"
#include "types/format.h"

namespace lumora::ImageOptimizer {
namespace {

// The encoder of WebP stands outside the list of writable types.
std::string outputType(const std::string& sourceType, const OptimizerSettings& settings)
{
    if (isWebP(settings.outputFormat)) return std::string(*utiIdentifier(settings.outputFormat));
    return outputUTI(sourceType, settings, writableTypeIdentifiers());
}

} // namespace

OutputPlan plan(const std::filesystem::path& input, const std::string& sourceType,
                const OptimizerSettings& settings, const BatchNames& names)
{
    const std::filesystem::path* const other = names.otherOutputOf(input);
    std::filesystem::path path = other ? *other : outputPath(input, sourceType, settings);
    if (!names.isDecided(input, path)) throw ImageOptimizerError::unreadableImage();
    if (const auto status = checkReplaceable(path); !status) throw PlatformError(status.error().description);
    const bool isTaken = fileExists(path);
    return {std::move(path), isTaken, outputType(sourceType, settings)};
}

} // namespace lumora::ImageOptimizer
