// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A note is a link to the draft: made in one step, and never a piece of one.
#include "system/draft_note.h"

#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <utility>

namespace lumora {
namespace {

constexpr std::string_view suffix = ".draft";

bool isOwnDraft(const std::filesystem::path& file)
{
    struct stat status = {};
    return file.filename().native().starts_with(DraftNote::prefix) && ::lstat(file.c_str(), &status) == 0 &&
           S_ISREG(status.st_mode) && status.st_uid == ::geteuid();
}

} // namespace

DraftNote::DraftNote(const std::filesystem::path& draft)
{
    auto folder = PrivateFolder::shared();
    std::error_code error;
    const auto absolute = std::filesystem::absolute(draft, error);
    if (!folder || error) return;
    auto note = (*folder)->path() / (draft.filename().native() + std::string(suffix));
    if (::symlink(absolute.c_str(), note.c_str()) != 0) return;
    m_folder = std::move(*folder);
    m_note = std::move(note);
}

DraftNote::DraftNote(DraftNote&& other) noexcept
    : m_folder(std::move(other.m_folder)), m_note(std::exchange(other.m_note, {}))
{
}

DraftNote& DraftNote::operator=(DraftNote&& other) noexcept
{
    if (this == &other) return *this;
    remove();
    m_note = std::exchange(other.m_note, {});
    m_folder = std::move(other.m_folder);
    return *this;
}

DraftNote::~DraftNote()
{
    remove();
}

void DraftNote::remove()
{
    if (!m_note.empty()) ::unlink(m_note.c_str());
    m_note.clear();
    m_folder.reset();
}

void removeNotedDrafts(const std::filesystem::path& folder)
{
    std::error_code error;
    for (std::filesystem::directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        if (!entry->path().native().ends_with(suffix)) continue;
        std::error_code unreadable;
        const auto draft = std::filesystem::read_symlink(entry->path(), unreadable);
        if (!unreadable && isOwnDraft(draft)) ::unlink(draft.c_str());
    }
}

} // namespace lumora
