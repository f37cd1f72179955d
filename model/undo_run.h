// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files taken back on a thread of its own, one after another. Belongs to the main thread, on which it calls
// back; destruction waits for the file in work and leaves the rest.
#pragma once

#include "history/history_records.h"
#include "records/processing_result.h"
#include "records/uuid.h"

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

namespace lumora {

class History;
class MainThreadQueue;

// A row that shows an output.
struct ShownOutput
{
    Uuid id;
    std::filesystem::path source;
    std::filesystem::path output;
};

struct UndoOrder
{
    std::shared_ptr<History> history;
    // Which files; absent when the history cannot be read. Asked off the main thread.
    std::function<std::optional<std::vector<FileRecord>>(History&)> files;
    // The rows that there are, newest first.
    std::vector<ShownOutput> shown;
};

struct UndoObserver
{
    std::function<void(int files)> begun;
    // A file's row, which has the identity of the newest one that shows its output. What was taken back has
    // no output any more and is no success; what stays as it is remains one.
    std::function<void(const ProcessingResult&)> undone;
    // The last call; false when the history cannot be read.
    std::function<void(bool isRead)> ended;
};

class UndoRun
{
public:
    UndoRun(UndoOrder order, UndoObserver observer, MainThreadQueue& mainThread);

    // The file in work is finished, and that was all.
    void cancel() { m_thread.request_stop(); }
    bool isCancelled() const { return m_thread.get_stop_token().stop_requested(); }

private:
    std::jthread m_thread;
};

} // namespace lumora
