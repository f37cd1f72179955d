// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The file operations of the program, on paths as bytes. Every failure carries a sentence that names the file
// and the system's reason. Stateless but for AtomicFile; safe on any thread.
#pragma once

#include "platform/file_descriptor.h"
#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <optional>
#include <span>

namespace lumora {

// Bytes of the regular file that the path leads to (links are followed); 0 when it cannot be told.
std::int64_t fileSize(const std::filesystem::path& url);

// True when the path is taken: by anything, a link that leads nowhere included, since a new file cannot be
// made there.
bool fileExists(const std::filesystem::path& url);

// A regular file, links followed, that this user may run.
bool isExecutableFile(const std::filesystem::path& url);

// Removes one file, or a link and not what it leads to. A folder is refused, whatever it holds.
Status removeFile(const std::filesystem::path& url);

// Copies the bytes and the permissions of a regular file. The target must not exist: a file that appeared
// meanwhile is kept and the copy fails. A copy that fails part-way leaves no target.
Status copyFile(const std::filesystem::path& from, const std::filesystem::path& to);

// The time of the last change of content, links followed; absent when it cannot be read.
std::optional<timespec> modificationDate(const std::filesystem::path& url);
// Changes that time alone.
Status setModificationDate(const std::filesystem::path& url, timespec date);

// The user's folder for short-lived files, absolute: what TMPDIR names when that is a folder, else /tmp.
std::filesystem::path temporaryDirectory();

// A file that appears under its name complete or not at all: written under a name of its own beside the
// target, then renamed over it. An existing target stays as it was until commit() and is replaced by it.
// Survives the end of the program, not of the machine: nothing is forced to the disk, which would cost more
// than the encode of a small image. Use from one thread.
class AtomicFile
{
public:
    // Fails when the target's folder cannot take a new file.
    static Result<AtomicFile> create(const std::filesystem::path& target);

    AtomicFile(AtomicFile&&) noexcept;
    AtomicFile& operator=(AtomicFile&&) noexcept = delete;
    // Discards what was not committed.
    ~AtomicFile();

    // One system call or more for each call: hand over whole strips, not single pixels.
    Status append(std::span<const std::byte> bytes);
    // The last call. After a failure the target is as it was before.
    Status commit();

private:
    AtomicFile(std::filesystem::path target, std::filesystem::path draft, FileDescriptor descriptor);

    std::filesystem::path m_target;
    std::filesystem::path m_draft; // empty once there is nothing left to discard
    FileDescriptor m_descriptor;
};

// Removes what AtomicFile left in this folder when its program was killed: drafts that nobody has touched for
// an hour. Failures are left to the next call.
void removeStaleDrafts(const std::filesystem::path& folder);

// AtomicFile in one call.
Status writeFileAtomically(const std::filesystem::path& url, std::span<const std::byte> bytes);

} // namespace lumora
