// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the optimizer takes from outside besides the file system: the question to the user, the Trash, the
// order to give up, and what the rest of its batch writes. Each is replaceable in tests. A value; its
// functions are called from the worker's thread.
#pragma once

#include "engine/batch_names.h"
#include "engine/batch_outputs.h"
#include "engine/picture_work.h"
#include "records/file_trace.h"
#include "system/disk_sync.h"
#include "system/result.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>

namespace lumora {

class MemoryBudget;

struct OptimizerServices
{
    // Asked about an existing output file when the settings warn before overwriting; true replaces, false
    // skips. May block its worker while the question stands; whoever provides it hops to the user-interface
    // thread. The default of a program without a user is to skip.
    std::function<bool(const std::filesystem::path&)> confirmOverwrite;
    // Moves a file to the user's Trash.
    std::function<Status(const std::filesystem::path&)> moveToTrash;
    // Once requested, a file in work fails as soon as it can.
    std::stop_token stop;
    // Called when nothing is left of a file but to wait for the disk, before its original may go to the
    // Trash; may be null.
    std::function<void()> waitsForDisk = nullptr;
    std::shared_ptr<DiskSync> disk = std::make_shared<DiskSync>();
    // The outputs of the batch that the file belongs to.
    std::shared_ptr<const ImageOptimizer::BatchNames> names = std::make_shared<ImageOptimizer::BatchNames>();
    // What the batch has written so far; null for a file by itself.
    std::shared_ptr<ImageOptimizer::BatchOutputs> outputs = nullptr;
    // Who works on the pixels of a file; called once a file. Where there is nobody, every file fails.
    ImageOptimizer::PictureWorkMaker pixels;
    // What large files share out among all that run at once; null where nothing else runs.
    MemoryBudget* memory = nullptr;

    // Gives a file that is about to be replaced a further name in the Trash, and says where. Empty: what is
    // replaced is gone.
    std::function<Result<std::filesystem::path>(const std::filesystem::path&)> keepInTrash;
    // Whether an output that stands there already is what an earlier batch made of this input, untouched.
    // Empty: nobody knows.
    std::function<bool(const std::filesystem::path& output, const std::filesystem::path& input)> isOwnOutput;
    // Filled in with what a file leaves behind; null where nobody remembers it.
    FileTrace* trace = nullptr;

    // The services of this machine: skip, the desktop's Trash, never stopped.
    static OptimizerServices system();
};

} // namespace lumora
