// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where this process has a draft under a hidden name, written down in its private folder for whoever tidies
// up after it: drafts lie beside pictures, where nobody would look for them. Use from one thread.
#pragma once

#include "system/private_folder.h"

#include <filesystem>
#include <memory>

namespace lumora {

class DraftNote
{
public:
    DraftNote() = default;
    // Before the draft is made. Without a private folder there is no note.
    explicit DraftNote(const std::filesystem::path& draft);
    DraftNote(DraftNote&&) noexcept;
    DraftNote& operator=(DraftNote&&) noexcept;
    ~DraftNote();

private:
    void remove();

    std::shared_ptr<const PrivateFolder> m_folder;
    std::filesystem::path m_note;
};

} // namespace lumora
