// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One file on its way to its output: the open file, the work on its pixels, and the memory that was set aside
// for it. What goes wrong leaves as the exceptions of a run. One thread.
#pragma once

#include "engine/memory_budget.h"
#include "engine/optimizer_services.h"
#include "engine/picture_work.h"
#include "records/optimizer_settings.h"
#include "system/output_file.h"
#include "system/regular_file.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace lumora::ImageOptimizer {

// What one file needs at every stage.
struct Job
{
    const std::filesystem::path& input;
    const OptimizerSettings& settings;
    const OptimizerServices& services;
};

class OpenedPicture
{
public:
    // Waits until there is memory for it. Throws unreadableImage when the file's beginning is damaged
    // already, and PlatformError when there is not enough memory or the job is stopped.
    explicit OpenedPicture(const Job& job);

    // As sniffed from the content.
    const std::string& typeIdentifier() const { return m_head.typeIdentifier; }
    // Whether the output is to have the size and the direction of what is stored.
    bool keepsFrame() const { return m_head.keepsFrame; }
    // The file as it was when it was opened.
    const std::optional<FileStamp>& stamp() const { return m_stamp; }

    // Throws as the constructor when the file is damaged anywhere. A small picture is kept in memory, a large
    // one closed.
    void proveReadable();
    // After proveReadable().
    void openAgain();

    // Writes the output, see PictureWork. Throw as the constructor, but for what the output is to blame for.
    WorkResult<PictureSize> encode(const OutputFile& output, const std::string& typeIdentifier);
    WorkResult<PictureSize> writePpm(const OutputFile& output);

    // Writes the input's own file where it will do, see PictureWork. Throws likewise.
    WorkResult<bool> copy(const OutputFile& output);

    // After a failure of whoever else took part: throws what the input is to blame for, if it is.
    void blameInput();

    // See PictureWork.
    std::vector<std::string> losses(const OutputFile& output, const std::string& typeIdentifier);
    bool isWhole(const OutputFile& output);

    // Gives up everything, before something that may take long.
    void close();

private:
    void open();

    const Job& m_job;
    FileDescriptor m_file;
    std::optional<FileStamp> m_stamp;
    std::unique_ptr<PictureWork> m_work;
    MemoryBudget::Share m_share;
    PictureHead m_head;
    bool m_isKept = true;
};

} // namespace lumora::ImageOptimizer
