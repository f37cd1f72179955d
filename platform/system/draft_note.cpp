// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A note is a link to the draft: made in one step, and never a piece of one.
#include "system/draft_note.h"

#include "noted_drafts.h"

#include <unistd.h>

#include <string>
#include <utility>

namespace lumora {

DraftNote::DraftNote(const std::filesystem::path& draft)
{
    auto folder = PrivateFolder::shared();
    std::error_code error;
    const auto absolute = std::filesystem::absolute(draft, error);
    if (!folder || error) return;
    auto note = (*folder)->path() / (draft.filename().native() + std::string(draftNoteSuffix));
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

} // namespace lumora
