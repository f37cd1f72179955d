// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/regular_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace lumora {
namespace {

FileStamp stampOf(const struct stat& status)
{
    return {status.st_dev, status.st_ino, status.st_size, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

} // namespace

Result<FileDescriptor> openRegularFile(const std::filesystem::path& path)
{
    FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    struct stat status = {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0) return Error{std::strerror(errno)};
    if (!S_ISREG(status.st_mode)) return Error{"not a file"};
    return file;
}

std::optional<FileStamp> fileStamp(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) return std::nullopt;
    return stampOf(status);
}

std::optional<FileStamp> fileStamp(const std::filesystem::path& path)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) return std::nullopt;
    return stampOf(status);
}

std::optional<FileStamp> linkStamp(const std::filesystem::path& path)
{
    struct stat status = {};
    if (lstat(path.c_str(), &status) != 0) return std::nullopt;
    return stampOf(status);
}

// Times beyond the years that 64 bits hold wrap around, which still tells two of them apart.
FileState fileState(const FileStamp& stamp)
{
    constexpr std::uint64_t nanoseconds = 1'000'000'000;
    const std::uint64_t modified = static_cast<std::uint64_t>(stamp.seconds) * nanoseconds +
                                   static_cast<std::uint64_t>(stamp.nanoseconds);
    return {stamp.size, static_cast<std::int64_t>(modified)};
}

Result<std::vector<std::byte>> readAll(int descriptor, std::size_t most)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) return Error{std::strerror(errno)};
    if (static_cast<std::size_t>(status.st_size) > most) return Error{"too large a file"};
    std::vector<std::byte> bytes(static_cast<std::size_t>(status.st_size));
    std::size_t filled = 0;
    while (filled < bytes.size()) {
        const ssize_t count =
            pread(descriptor, bytes.data() + filled, bytes.size() - filled, static_cast<off_t>(filled));
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return Error{std::strerror(errno)};
        if (count == 0) break;
        filled += static_cast<std::size_t>(count);
    }
    bytes.resize(filled);
    return bytes;
}

} // namespace lumora
