// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files of pictures, opened and read. Any thread.
#pragma once

#include "records/file_trace.h"
#include "system/file_descriptor.h"
#include "system/result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <vector>

namespace lumora {

// Fails for everything but a file, and never waits: a pipe that has the name of a picture must not hold a
// worker for ever.
Result<FileDescriptor> openRegularFile(const std::filesystem::path& path);

// Which file it is and when its content last changed: two that are equal are one and the same, untouched.
struct FileStamp
{
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = 0;
    std::int64_t seconds = 0; // of the modification time
    std::int64_t nanoseconds = 0;

    bool operator==(const FileStamp&) const = default;
};

// Absent when the system cannot tell. Of a path, links are followed.
std::optional<FileStamp> fileStamp(int descriptor);
std::optional<FileStamp> fileStamp(const std::filesystem::path& path);
// Of a link itself.
std::optional<FileStamp> linkStamp(const std::filesystem::path& path);

FileState fileState(const FileStamp& stamp);

// All bytes of an open file, whose position stays where it is. Fails for one of more than `most` bytes.
Result<std::vector<std::byte>> readAll(int descriptor, std::size_t most);

} // namespace lumora
