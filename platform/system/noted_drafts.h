// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What drafts and the notes of them are called, and the removal of those whose program was killed.
#pragma once

#include <filesystem>
#include <string_view>

namespace lumora {

inline constexpr std::string_view draftPrefix = ".lumora-";
inline constexpr std::string_view draftNoteSuffix = ".draft";

// Removes the drafts that the notes in this folder lead to.
void removeNotedDrafts(const std::filesystem::path& folder);

} // namespace lumora
