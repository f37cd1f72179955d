// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Looks up where files are by now, on a thread of its own: a volume that sleeps keeps nobody waiting. Main
// thread.
#pragma once

#include "model/main_thread_queue.h"
#include "model/worker_pool.h"
#include "ui/history/file_places.h"

#include <cstdint>
#include <functional>
#include <mutex>
#include <vector>

namespace lumora {

class FilePlacesReader
{
public:
    using Take = std::function<void(std::int64_t file, const FilePlaces& places)>;

    explicit FilePlacesReader(Take take) : m_take(std::move(take)) {}
    // Waits for the file that is being looked up.
    ~FilePlacesReader();

    // In this order. What was wanted before and has not begun is not wanted any more.
    void want(std::vector<FileRecord> files);
    // The Trash is read anew.
    void forgetTrash();

private:
    void work();

    const Take m_take;
    std::mutex m_mutex;               // guards the next two
    std::vector<FileRecord> m_wanted; // the next one last
    bool m_forgetsTrash = false;
    TrashContents m_trash; // of the thread
    MainThreadQueue m_mainThread;
    WorkerPool m_thread{1};
};

} // namespace lumora
