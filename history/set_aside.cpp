// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/set_aside.h"

#include "system/file_services.h"

#include <fcntl.h>
#include <sys/file.h>

#include <chrono>
#include <string>
#include <thread>

namespace lumora {
namespace {

std::filesystem::path withTail(const std::filesystem::path& file, const char* tail)
{
    return file.native() + tail;
}

} // namespace

FileDescriptor lockHistory(const std::filesystem::path& file)
{
    constexpr int attempts = 200;
    FileDescriptor lock(
        ::open(withTail(file, "-lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600));
    for (int attempt = 0; lock.isOpen() && attempt < attempts; ++attempt) {
        if (::flock(lock.get(), LOCK_EX | LOCK_NB) == 0) return lock;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return FileDescriptor();
}

std::filesystem::path setAside(const std::filesystem::path& file, std::string_view why)
{
    const std::string stem = (file.parent_path() / file.stem()).native() + "-" + std::string(why) + "-";
    std::filesystem::path name;
    int number = 0;
    do {
        name = stem + std::to_string(++number) + file.extension().native();
    } while (fileExists(name) || fileExists(withTail(name, "-wal")));
    std::error_code error;
    std::filesystem::rename(file, name, error);
    if (error) return {};
    std::error_code missing;
    std::filesystem::rename(withTail(file, "-wal"), withTail(name, "-wal"), missing);
    std::filesystem::remove(withTail(file, "-shm"), missing);
    return name;
}

} // namespace lumora
