// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/history_locks.h"

#include <fcntl.h>
#include <sys/file.h>

#include <chrono>
#include <string>
#include <thread>
#include <utility>

namespace lumora {
namespace {

using namespace std::chrono_literals;

FileDescriptor lockFile(const std::filesystem::path& history, const char* tail)
{
    const std::string name = history.native() + tail;
    return FileDescriptor(::open(name.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600));
}

bool isLockedWithin(int lock, std::chrono::milliseconds patience)
{
    constexpr auto pause = 10ms;
    for (auto waited = 0ms; waited < patience; waited += pause) {
        if (::flock(lock, LOCK_EX | LOCK_NB) == 0) return true;
        std::this_thread::sleep_for(pause);
    }
    return false;
}

} // namespace

FileDescriptor lockHistory(const std::filesystem::path& file)
{
    FileDescriptor lock = lockFile(file, "-lock");
    return lock.isOpen() && isLockedWithin(lock.get(), 2s) ? std::move(lock) : FileDescriptor();
}

std::optional<FileDescriptor> lockUndo(const std::filesystem::path& file)
{
    FileDescriptor lock = lockFile(file, "-undo-lock");
    if (lock.isOpen() && !isLockedWithin(lock.get(), 10s)) return std::nullopt;
    return lock;
}

} // namespace lumora
