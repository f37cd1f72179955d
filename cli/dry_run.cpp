// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/dry_run.h"

#include "cli/console.h"
#include "cli/json_line.h"
#include "cli/printable.h"
#include "engine/file_input_resolver.h"
#include "engine/output_naming.h"
#include "formats/image_destination.h"
#include "formats/image_source.h"
#include "records/errors.h"
#include "system/file_services.h"

namespace lumora::cli {

namespace {

ProcessingResult wouldFail(const std::filesystem::path& url, const std::string& reason)
{
    return {url, std::nullopt, fileSize(url), 0, reason, false};
}

// The steps of a real run up to the first that writes.
ProcessingResult foresee(const std::filesystem::path& url, const CommandLine& line)
{
    const OptimizerSettings settings = line.settings();
    const auto source = ImageSource::open(url);
    if (!source) throw ImageOptimizerError::unreadableImage();
    const std::filesystem::path output = ImageOptimizer::outputURL(url, source->typeIdentifier(), settings);
    const bool exists = fileExists(output);
    if (exists && line.existing == Existing::skip) throw ImageOptimizerError::overwriteDeclined();
    if (!isWebP(settings.outputFormat))
        ImageOptimizer::outputUTI(source->typeIdentifier(), settings,
                                  ImageDestination::writableTypeIdentifiers());
    return {url, output, fileSize(url), 0, exists ? "Would be replaced" : "Would be written", true};
}

ProcessingResult foreseen(const std::filesystem::path& url, const CommandLine& line)
{
    try {
        return foresee(url, line);
    } catch (const std::exception& error) {
        return wouldFail(url, error.what());
    }
}

std::string row(const ProcessingResult& result)
{
    const std::string source = printable(result.sourceURL.native());
    if (!result.outputURL) return source + ": " + printable(result.message);
    return source + " -> " + printable(result.outputURL->native()) + ": " + result.message;
}

} // namespace

int dryRun(const CommandLine& line, Console& console)
{
    const auto urls = FileInputResolver::imageURLs(line.paths);
    if (urls.empty()) console.complain("No supported image files found");
    bool allSucceed = !urls.empty();
    for (const auto& url : urls) {
        const ProcessingResult result = foreseen(url, line);
        allSucceed = allSucceed && result.isSuccess;
        if (line.json)
            console.result(jsonLine(result));
        else if (!line.quiet || !result.isSuccess)
            console.result(row(result));
        if (console.resultsFailed()) return 1;
    }
    return allSucceed ? 0 : 1;
}

} // namespace lumora::cli
