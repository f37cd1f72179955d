// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What tells the content of one file from another's. Against accidents, not against people who make two files
// of one digest. Any thread.
#pragma once

#include <optional>
#include <string>

namespace lumora {

// 16 bytes, of everything that an open file holds, whose position stays where it is. Absent when it cannot be
// read.
std::optional<std::string> contentDigest(int descriptor);

} // namespace lumora
