// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The file that stands where an output goes. One that is replaced without a question goes to the Trash,
// unless it is what we once made of the same picture. One thread.
#pragma once

#include "engine/opened_picture.h"
#include "records/file_trace.h"
#include "system/atomic_file.h"
#include "system/regular_file.h"

#include <filesystem>
#include <optional>

namespace lumora::ImageOptimizer {

class ReplacedOutput
{
public:
    // Asks about the file and changes nothing.
    ReplacedOutput(const Job& job, const std::filesystem::path& output);

    // Right before the output gets its name: gives what stands there a name in the Trash. It stays in its
    // place as well, to be replaced, wherever the Trash is of the same file system; else the place is free
    // then, and is to be kept by whoever takes it meanwhile.
    ExistingFile makeRoom();
    // The output got its name, or did not: then all is as before.
    void settle(bool isPlaced);

private:
    enum class Trashed { no, besides, instead };

    const Job& m_job;
    const std::filesystem::path& m_output;
    std::optional<FileStamp> m_standing;
    bool m_isLoss = false;
    Trashed m_trashed = Trashed::no;
    std::optional<std::filesystem::path> m_place;
};

} // namespace lumora::ImageOptimizer
