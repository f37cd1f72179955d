// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files of pictures, opened and read. Any thread.
#pragma once

#include "system/file_descriptor.h"
#include "system/result.h"

#include <cstddef>
#include <filesystem>
#include <vector>

namespace lumora {

// Fails for everything but a file, and never waits: a pipe that has the name of a picture must not hold a
// worker for ever.
Result<FileDescriptor> openRegularFile(const std::filesystem::path& path);

// All bytes of an open file, whose position stays where it is. Fails for one of more than `most` bytes.
Result<std::vector<std::byte>> readAll(int descriptor, std::size_t most);

} // namespace lumora
