// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The file operations of the program, on paths as bytes. Every failure carries a sentence that names the file
// and the system's reason. Stateless; safe on any thread.
#pragma once

#include "system/result.h"

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>

namespace lumora {

// Bytes of the regular file that the path leads to (links are followed); 0 when it cannot be told.
std::int64_t fileSize(const std::filesystem::path& path);

// True when the path is taken: by anything, a link that leads nowhere included, since a new file cannot be
// made there.
bool fileExists(const std::filesystem::path& path);

// A regular file, links followed, that this user may run.
bool isExecutableFile(const std::filesystem::path& path);

// Fails when a folder stands at the path, which no file can replace.
Status checkReplaceable(const std::filesystem::path& path);

// Removes one file, or a link and not what it leads to. A folder is refused, whatever it holds.
Status removeFile(const std::filesystem::path& path);

// The time of the last change of content, links followed; absent when it cannot be read.
std::optional<timespec> modificationDate(const std::filesystem::path& path);
// Changes that time alone.
Status setModificationDate(const std::filesystem::path& path, timespec date);

// Who may read and write the file, links followed: bits as of chmod(2). Absent when it cannot be told.
std::optional<std::uint32_t> filePermissions(const std::filesystem::path& path);

// The user's folder for short-lived files, absolute: what TMPDIR names when that is a folder, else /tmp.
std::filesystem::path temporaryDirectory();

} // namespace lumora
