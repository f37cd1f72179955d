// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Folders that are one program or one library of photographs, whose inside is nobody's to work on.
// Thread-safe.
#pragma once

#include <filesystem>

namespace lumora {

// By the extension of its name, case-insensitive, out of a closed list, and by what lies inside: here an
// extension alone says nothing, and people name folders of pictures "my.app". Looks at the disk only for
// names of the list.
bool isPackage(const std::filesystem::path& folder);

} // namespace lumora
