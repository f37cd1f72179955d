// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The files that a batch has written, known by what they are and not by their names: where a file system
// takes two spellings for one name, or one folder is mounted twice, two names are one file. Any thread; while
// one gives its file a name the others wait.
#pragma once

#include "system/atomic_file.h"
#include "system/result.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <mutex>
#include <set>
#include <utility>

namespace lumora::ImageOptimizer {

class BatchOutputs
{
public:
    // Gives the file its name, which is `output`. One that the batch wrote itself is never replaced: that is
    // the failure of ExistingFile::keep. `makeRoom` is called when another one is about to be replaced, and
    // says whether there is still one to be replaced.
    Status place(AtomicFile& file, const std::filesystem::path& output, ExistingFile existing,
                 const std::function<ExistingFile()>& makeRoom);

private:
    std::mutex m_mutex;
    std::set<std::pair<std::uint64_t, std::uint64_t>> m_written; // device and inode
};

} // namespace lumora::ImageOptimizer
