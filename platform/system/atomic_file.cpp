// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/atomic_file.h"
#include "file_errors.h"
#include "free_name.h"
#include "noted_drafts.h"
#include "records/uuid.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace lumora {
namespace {

constexpr mode_t ownerOnly = 0600;

std::filesystem::path pathOf(int file)
{
    return "/proc/self/fd/" + std::to_string(file);
}

// A name of its own, not one made from the target's, which may already be as long as the file system allows.
std::filesystem::path hiddenNameBeside(const std::filesystem::path& target)
{
    return target.parent_path() / (std::string(draftPrefix) + Uuid::random().toString());
}

FileDescriptor openUnnamed(const std::filesystem::path& target)
{
    const std::filesystem::path folder = target.has_parent_path() ? target.parent_path() : ".";
    FileDescriptor file(::open(folder.c_str(), O_TMPFILE | O_RDWR | O_CLOEXEC, ownerOnly));
    // Without it the file would never get a name.
    if (file.isOpen() && ::access(pathOf(file.get()).c_str(), F_OK) != 0) return FileDescriptor();
    return file;
}

// 0 or errno.
int giveName(int file, const std::filesystem::path& name)
{
    return ::linkat(AT_FDCWD, pathOf(file).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) == 0 ? 0
                                                                                                    : errno;
}

// What the umask leaves of a new file's permissions. Not by umask(2), which would change it for all threads.
std::uint32_t permittedBits()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        std::uint32_t mask = 0;
        if (word == "Umask:" && status >> std::oct >> mask) return 0666U & ~mask;
    }
    return ownerOnly;
}

// Some file systems report a failed write only when a descriptor is closed.
bool isWritten(int file)
{
    FileDescriptor other(::fcntl(file, F_DUPFD_CLOEXEC, 0));
    return other.isOpen() && other.close();
}

DraftNote noteOf(const std::filesystem::path& draft, DraftNotes notes)
{
    return notes == DraftNotes::kept ? DraftNote(draft) : DraftNote();
}

} // namespace

Result<AtomicFile> AtomicFile::create(const std::filesystem::path& target, Draft draft, DraftNotes notes)
{
    if (draft == Draft::unnamedWherePossible) {
        if (FileDescriptor unnamed = openUnnamed(target); unnamed.isOpen())
            return AtomicFile(target, {}, std::move(unnamed), notes);
    }
    std::filesystem::path name = hiddenNameBeside(target);
    DraftNote note = noteOf(name, notes);
    FileDescriptor file(::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, ownerOnly));
    if (!file.isOpen()) return fileError(target, "written", errno);
    AtomicFile draftFile(target, std::move(name), std::move(file), notes);
    draftFile.m_note = std::move(note);
    return draftFile;
}

AtomicFile::AtomicFile(std::filesystem::path target, std::filesystem::path draft, FileDescriptor descriptor,
                       DraftNotes notes)
    : OutputFile(std::move(descriptor), std::move(target)), m_draft(std::move(draft)), m_notes(notes)
{
}

AtomicFile::AtomicFile(AtomicFile&& other) noexcept
    : OutputFile(std::move(other)), m_draft(std::exchange(other.m_draft, {})), m_notes(other.m_notes),
      m_note(std::move(other.m_note)), m_permissions(other.m_permissions), m_isTaken(other.m_isTaken)
{
}

AtomicFile::~AtomicFile()
{
    if (!m_draft.empty()) ::unlink(m_draft.c_str());
}

std::filesystem::path AtomicFile::draft() const
{
    return m_draft.empty() ? pathOf(descriptor()) : m_draft;
}

Status AtomicFile::commit(ExistingFile existing)
{
    if (!isWritten(descriptor())) return fileError(name(), "written", errno);
    // A file system without permissions has nothing to refuse. What is its owner's alone was made so.
    if (m_permissions != ownerOnly)
        static_cast<void>(::fchmod(descriptor(), m_permissions & permittedBits()));
    const int failure = takeName(existing);
    m_isTaken = existing == ExistingFile::keep && failure == EEXIST;
    if (failure != 0) return fileError(name(), "written", failure);
    m_draft.clear();
    m_note = {};
    return Done{};
}

// 0 or errno.
int AtomicFile::takeName(ExistingFile existing)
{
    if (m_draft.empty()) {
        const int refusal = giveName(descriptor(), name());
        if (refusal != EEXIST || existing == ExistingFile::keep) return refusal;
        std::filesystem::path hidden = hiddenNameBeside(name());
        m_note = noteOf(hidden, m_notes);
        if (const int failure = giveName(descriptor(), hidden); failure != 0) {
            m_note = {};
            return failure;
        }
        m_draft = std::move(hidden);
    }
    if (existing == ExistingFile::keep) return renameToFreeName(m_draft, name());
    return std::rename(m_draft.c_str(), name().c_str()) == 0 ? 0 : errno;
}

void removeStaleDrafts(const std::filesystem::path& folder)
{
    const auto oldest = std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        std::error_code unknown;
        if (!entry->path().filename().native().starts_with(draftPrefix)) continue;
        if (!std::filesystem::is_regular_file(entry->symlink_status(unknown))) continue;
        if (entry->last_write_time(unknown) < oldest && !unknown)
            std::filesystem::remove(entry->path(), unknown);
    }
}

Status writeFileAtomically(const std::filesystem::path& path, std::span<const std::byte> bytes)
{
    Result<AtomicFile> file = AtomicFile::create(path, Draft::unnamedWherePossible, DraftNotes::none);
    if (!file) return file.error();
    if (Status appended = file->append(bytes); !appended) return appended;
    return file->commit();
}

} // namespace lumora
