// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A mark on outputs whose originals went to the Trash: such a file is what is left of its picture, and nobody
// replaces it unasked by another one that happens to have the same name. The mark is an extended attribute
// that tells nothing of the original but whether a given file is it. File systems without such attributes
// have no marks. Any thread.
#pragma once

#include "system/regular_file.h"

#include <filesystem>

namespace lumora {

// Before the original goes. Failures are no reason to keep it.
void markAsOnlyCopy(const std::filesystem::path& file, const FileStamp& original);
void unmarkAsOnlyCopy(const std::filesystem::path& file);

// Whether the file is marked, and for another original than the one at `input`: one that came back from the
// Trash is itself.
bool isOnlyCopyOfAnother(const std::filesystem::path& file, const std::filesystem::path& input);

} // namespace lumora
