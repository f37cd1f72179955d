// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Writing a file so that nobody ever sees a part of it. Every failure carries a sentence that names the file
// and the system's reason.
#pragma once

#include "system/file_descriptor.h"
#include "system/result.h"

#include <cstddef>
#include <filesystem>
#include <span>

namespace lumora {

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
Status writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes);

} // namespace lumora
