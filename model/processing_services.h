// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the processing model takes from outside. A value: an application starts from system() and replaces
// what it answers itself, a test replaces everything.
#pragma once

#include "engine/optimizer_services.h"
#include "model/delay.h"
#include "model/folder_access.h"
#include "records/optimizer_settings.h"
#include "records/processing_result.h"

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace lumora {

class History;

struct ProcessingServices
{
    // ImageOptimizer::optimize. Called on workers; its services carry the worker's road to confirmOverwrite
    // below and the order to stop.
    std::function<ProcessingResult(const std::filesystem::path&, const OptimizerSettings&,
                                   const OptimizerServices&)>
        optimize;
    // The Trash for `optimize`; the other members are the model's to fill in.
    OptimizerServices optimizerServices;
    // FileInputResolver::imageURLs. Called on a thread of its own.
    std::function<std::vector<std::filesystem::path>(const std::vector<std::filesystem::path>&,
                                                     std::stop_token)>
        expand;
    // Asked on the main thread, where it may run a modal dialog; true replaces. Questions come one after
    // another and each holds up its own file only. Empty: every existing output is skipped.
    std::function<bool(const std::filesystem::path&)> confirmOverwrite;
    // Asked on the main thread before a batch writes next to its originals.
    SaveAccessRequest requestSaveAccess;
    // Asked on the main thread, where it may run a modal dialog, before anything is written for folders in
    // which so many images were found; false ends the batch. Empty: nobody is asked.
    std::function<bool(std::size_t files, std::size_t folders)> confirmManyFiles;
    std::size_t manyFiles = 1000;
    int activeProcessorCount = 1;
    // Bytes that large files may take at once, asked now and then on workers.
    std::function<std::int64_t()> memoryToShare = [] { return std::int64_t{0}; };
    // The program of the processes that work on pixels.
    std::filesystem::path workerProgram;
    // Where batches are remembered, and by what name of this program. Asked on the main thread; empty or
    // null: nowhere.
    std::function<std::shared_ptr<History>()> history;
    // Whether one that begins now is remembered. Asked on the main thread.
    std::function<bool()> keepsHistory = [] { return true; };
    std::string origin;
    // The number of workers whatever the processors; fewer when there are fewer files.
    std::optional<int> workers;
    // From the last drop of a burst to the start of its batch.
    std::chrono::milliseconds debounce{150};
    DelayFactory makeDelay = makeTimerDelay;

    // The engine on this machine; overwrite questions skip, every folder is granted.
    static ProcessingServices system();
};

} // namespace lumora
