// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/dry_run.h"

#include "cli/console.h"
#include "cli/json_line.h"
#include "cli/named_images.h"
#include "cli/overwrite_prompt.h"
#include "cli/printable.h"
#include "engine/opened_picture.h"
#include "engine/output_plan.h"
#include "engine/worker/remote_picture_work.h"
#include "history/history.h"
#include "model/stats_store.h"
#include "records/errors.h"
#include "system/bundle.h"
#include "system/file_services.h"

#include <memory>
#include <optional>
#include <utility>

namespace lumora::cli {

namespace {

// As in a run: whoever cannot be asked does not agree.
bool wouldBeSkipped(const ImageOptimizer::OutputPlan& output, Existing existing)
{
    if (!output.isTaken || existing == Existing::replace) return false;
    return existing == Existing::skip || !OverwritePrompt::isPossible();
}

std::string verdict(const ImageOptimizer::OutputPlan& output, Existing existing)
{
    if (!output.isTaken) return "Would be written";
    return existing == Existing::ask ? "Would be asked about" : "Would be replaced";
}

// The steps of a real run up to the first that writes, without the decoding of the picture.
ProcessingResult foresee(const std::filesystem::path& path, const CommandLine& line,
                         const OptimizerServices& services)
{
    const OptimizerSettings settings = line.settings();
    if (services.names->isLeftAlone(path)) throw LeftAlone::alreadyOptimized();
    const ImageOptimizer::Job job{path, settings, services};
    const ImageOptimizer::OpenedPicture picture(job);
    const ImageOptimizer::OutputPlan output =
        ImageOptimizer::plan(path, picture.typeIdentifier(), settings, *services.names);
    if (wouldBeSkipped(output, line.existing)) throw ImageOptimizerError::overwriteDeclined();
    return {path, output.path, fileSize(path), 0, verdict(output, line.existing), true};
}

ProcessingResult foreseen(const std::filesystem::path& path, const CommandLine& line,
                          const OptimizerServices& services)
{
    try {
        return foresee(path, line, services);
    } catch (const std::exception& error) {
        return {path, std::nullopt, 0, 0, error.what(), false};
    }
}

// Null where nothing is. A history that is not there yet is not made.
std::function<bool(const std::filesystem::path&)> whatIsLeftAlone(const CommandLine& line)
{
    if (!line.skipOptimized || !line.keepHistory) return nullptr;
    const std::filesystem::path file = History::fileIn(StatsStore::userDataFolder());
    if (!fileExists(file)) return nullptr;
    const auto history = std::make_shared<History>(file);
    return [history](const std::filesystem::path& path) { return history->isOptimized(path); };
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
    const auto [paths, complaints] = findImages(line.paths);
    for (const std::string& complaint : complaints)
        console.complain(complaint);
    if (paths.empty()) console.complain("No supported image files found");
    bool allSucceed = !paths.empty() && complaints.empty();
    OptimizerServices services = OptimizerServices::system();
    services.names = std::make_shared<ImageOptimizer::BatchNames>(paths, line.settings(), std::stop_token(),
                                                                  line.paths, whatIsLeftAlone(line));
    ImageOptimizer::WorkerProcesses workers(ImageOptimizer::findWorker(mainBundlePath()));
    services.pixels = [&workers](std::stop_token stop) {
        return std::make_unique<ImageOptimizer::RemotePictureWork>(workers, std::move(stop));
    };
    for (const auto& path : paths) {
        const ProcessingResult result = foreseen(path, line, services);
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
