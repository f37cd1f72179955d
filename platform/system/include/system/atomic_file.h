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

enum class ExistingFile { replace, keep };

// A file that appears under its name complete or not at all: written under a hidden name of its own beside
// the target, then renamed to it. An existing target stays as it was until commit(). Survives the end of the
// program, not of the machine: nothing is forced to the disk unless it is asked for, which would cost more
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
    // What another file holds from its position on.
    Status appendFile(int descriptor);
    // Everything that the file is to hold, instead of what it holds.
    Status rewrite(std::span<const std::byte> bytes);

    // For encoders that go back to places that they have written. Open for reading too; stays this object's.
    int descriptor() const { return m_descriptor.get(); }

    // Where the file is until commit().
    const std::filesystem::path& draft() const { return m_draft; }

    // Gives the file its name; nothing is appended any more. After a failure the target is as it was before,
    // and another attempt is allowed. `isTaken` tells from the others the failure of `keep` at a target that
    // exists.
    Status commit(ExistingFile existing = ExistingFile::replace);
    bool isTaken() const { return m_isTaken; }

private:
    AtomicFile(std::filesystem::path target, std::filesystem::path draft, FileDescriptor descriptor);

    std::filesystem::path m_target;
    std::filesystem::path m_draft; // empty once there is nothing left to discard
    FileDescriptor m_descriptor;
    bool m_isTaken = false;
};

// Forces a finished file and its name to the disk, so that both survive a power cut.
Status syncFile(const std::filesystem::path& path);

// Removes what AtomicFile left in this folder when its program was killed: drafts that nobody has touched for
// an hour. Failures are left to the next call.
void removeStaleDrafts(const std::filesystem::path& folder);

// AtomicFile in one call.
Status writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes);

} // namespace lumora
