// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A file that lies in memory and has no name, of a size that nobody can change: whoever is handed it can fill
// it, and whoever has mapped it can rely on its bytes being there.
#pragma once

#include "system/file_descriptor.h"
#include "system/result.h"

#include <cstddef>

namespace lumora {

// Open for reading and writing, at its beginning.
Result<FileDescriptor> makeMemoryFile(std::size_t bytes);

} // namespace lumora
