// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Waiting for the disk, so that a file survives a power cut.
#pragma once

#include "system/result.h"

#include <condition_variable>
#include <filesystem>
#include <memory>
#include <mutex>

namespace lumora {

// Those who wait at the same time wait together: they share the writes of the file system's journal, and one
// of each folder. Thread-safe.
class DiskSync
{
public:
    // Forces a finished file and its name to the disk. Throws std::bad_alloc.
    Status sync(const std::filesystem::path& file);

private:
    struct Group;

    std::mutex m_mutex;
    std::condition_variable m_ended;
    std::shared_ptr<Group> m_gathering; // guarded by m_mutex; null when nobody waits for the next one
    bool m_isSyncing = false;           // guarded by m_mutex
};

} // namespace lumora
