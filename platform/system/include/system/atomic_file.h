// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Writing a file so that nobody ever sees a part of it. Every failure carries a sentence that names the file
// and the system's reason.
#pragma once

#include "system/draft_note.h"
#include "system/file_descriptor.h"
#include "system/output_file.h"
#include "system/result.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>

namespace lumora {

enum class ExistingFile { replace, keep };

// Where a file is while it is being written: in the target's folder, without a name where the file system can
// do that, so that not even a killed program leaves a piece of one; otherwise under a hidden name of its own.
enum class Draft { unnamedWherePossible, named };

// Whether a hidden name is written down for those who tidy up after a killed program. Where they look in any
// case, the note would only cost time.
enum class DraftNotes { kept, none };

// A file that appears under its name complete or not at all. An existing target stays as it was until
// commit(). Nobody else can read the file before. Survives the end of the program, not of the machine:
// nothing is forced to the disk unless it is asked for, which would cost more than the encode of a small
// image. Use from one thread.
class AtomicFile : public OutputFile
{
public:
    // Fails when the target's folder cannot take a new file.
    static Result<AtomicFile> create(const std::filesystem::path& target,
                                     Draft draft = Draft::unnamedWherePossible,
                                     DraftNotes notes = DraftNotes::kept);

    AtomicFile(AtomicFile&&) noexcept;
    AtomicFile& operator=(AtomicFile&&) noexcept = delete;
    // Discards what was not committed.
    ~AtomicFile();

    // Opens the file as it is until commit().
    std::filesystem::path draft() const;

    // Who may read and write the file from commit() on, as far as the umask lets new files be; everybody, as
    // far as that, unless this is called. Bits as of chmod(2).
    void setPermissions(std::uint32_t bits) { m_permissions = bits; }

    // Gives the file its name; nothing is appended any more. After a failure the target is as it was before,
    // and another attempt is allowed. `isTaken` tells from the others the failure of `keep` at a target that
    // exists.
    Status commit(ExistingFile existing = ExistingFile::replace);
    bool isTaken() const { return m_isTaken; }

private:
    AtomicFile(std::filesystem::path target, std::filesystem::path draft, FileDescriptor descriptor,
               DraftNotes notes);
    int takeName(ExistingFile existing);

    std::filesystem::path m_draft; // empty without a name to discard
    DraftNotes m_notes;
    DraftNote m_note;
    std::uint32_t m_permissions = 0666;
    bool m_isTaken = false;
};

// Removes what AtomicFile left in this folder when its program was killed: drafts that nobody has touched for
// an hour. Failures are left to the next call.
void removeStaleDrafts(const std::filesystem::path& folder);

// AtomicFile in one call.
Status writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes);

} // namespace lumora
