// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Optimizes the files of a folder to WebP on two threads, with their pixels worked on in processes of their
// own or in this one: bench_workers bundle|here FOLDER OUT. Fails unless every file came out.
#include "engine/image_optimizer.h"
#include "engine/local/local_picture_work.h"
#include "engine/worker/remote_picture_work.h"
#include "tests/support/settings.h"

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <memory>
#include <stop_token>
#include <thread>
#include <utility>
#include <vector>

namespace lumora {
namespace {

namespace fs = std::filesystem;
using namespace ImageOptimizer;

bool isOptimized(const fs::path& file, const OptimizerSettings& settings, const OptimizerServices& services)
try {
    return optimize(file, settings, services).isSuccess;
} catch (const std::exception& failure) {
    std::fprintf(stderr, "%s: %s\n", file.c_str(), failure.what());
    return false;
}

int run(const fs::path& bundle, const fs::path& folder, const fs::path& out)
{
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(folder))
        files.push_back(entry.path());
    fs::create_directories(out);
    const OptimizerSettings settings =
        test::settings({.destinationMode = DestinationMode::selectedFolder, .destinationFolderURL = out});
    OptimizerServices services = OptimizerServices::system();
    WorkerProcesses processes(findWorker(bundle));
    services.pixels = [&](std::stop_token stop) -> std::unique_ptr<PictureWork> {
        if (bundle == "here") return std::make_unique<LocalPictureWork>();
        return std::make_unique<RemotePictureWork>(processes, std::move(stop));
    };

    std::atomic<std::size_t> next = 0;
    std::atomic<int> failed = 0;
    const auto work = [&] {
        for (std::size_t at = next++; at < files.size(); at = next++)
            failed += isOptimized(files[at], settings, services) ? 0 : 1;
    };
    std::jthread second(work);
    work();
    second.join();
    return failed == 0 && !files.empty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace
} // namespace lumora

int main(int count, char** arguments)
{
    if (count != 4) return EXIT_FAILURE;
    return lumora::run(arguments[1], arguments[2], arguments[3]);
}
