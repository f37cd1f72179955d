// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/disk_sync.h"

#include "file_errors.h"
#include "system/file_descriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <map>
#include <new>
#include <unistd.h>
#include <utility>
#include <vector>

namespace lumora {
namespace {

FileDescriptor openedToSync(const std::filesystem::path& path, int kind)
{
    return FileDescriptor(::open(path.empty() ? "." : path.c_str(), O_RDONLY | O_CLOEXEC | kind));
}

void startWriting(const std::filesystem::path& path)
{
    const FileDescriptor file = openedToSync(path, 0);
    if (file.isOpen()) ::sync_file_range(file.get(), 0, 0, SYNC_FILE_RANGE_WRITE);
}

Status forced(const std::filesystem::path& path, int kind)
{
    const FileDescriptor file = openedToSync(path, kind);
    if (!file.isOpen() || ::fsync(file.get()) != 0) return fileError(path, "written", errno);
    return Done{};
}

} // namespace

struct DiskSync::Group
{
    std::vector<std::filesystem::path> files;
    std::vector<Status> outcomes;
    bool hasEnded = false; // guarded by the mutex of all

    std::size_t add(const std::filesystem::path& file)
    {
        outcomes.reserve(files.size() + 1);
        files.push_back(file);
        outcomes.emplace_back(outOfMemory());
        return files.size() - 1;
    }

    // The journal that the first file waits for holds the others too when their data is on its way already.
    void sync()
    try {
        if (files.size() > 1) {
            for (const auto& file : files)
                startWriting(file);
        }
        std::map<std::filesystem::path, Status> folders;
        std::vector<Status> found;
        for (const auto& file : files)
            found.push_back(forced(file, 0));
        for (const auto& file : files)
            folders.try_emplace(file.parent_path(), Done{});
        for (auto& [folder, outcome] : folders)
            outcome = forced(folder, O_DIRECTORY);
        for (std::size_t i = 0; i < files.size(); ++i) {
            const Status& ofFolder = folders.at(files[i].parent_path());
            outcomes[i] = found[i] ? ofFolder : found[i];
        }
    } catch (const std::bad_alloc&) {
        return; // every outcome says so
    }
};

Status DiskSync::sync(const std::filesystem::path& file)
{
    std::unique_lock lock(m_mutex);
    if (!m_gathering) m_gathering = std::make_shared<Group>();
    const auto group = m_gathering;
    const std::size_t place = group->add(file);
    m_ended.wait(lock, [&] { return group->hasEnded || !m_isSyncing; });
    if (!group->hasEnded) {
        m_gathering = nullptr;
        m_isSyncing = true;
        lock.unlock();
        group->sync();
        lock.lock();
        m_isSyncing = false;
        group->hasEnded = true;
        m_ended.notify_all();
    }
    return group->outcomes[place];
}

} // namespace lumora
