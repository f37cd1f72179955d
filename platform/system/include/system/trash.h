// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The user's Trash, as the desktop keeps it. Safe on any thread.
#pragma once

#include "system/result.h"

#include <filesystem>

namespace lumora {

// Moves the file, or a link and not what it leads to, to the Trash. A failure leaves it untouched where it
// is; some file systems have no Trash, which is such a failure.
Status moveToTrash(const std::filesystem::path& path);

} // namespace lumora
