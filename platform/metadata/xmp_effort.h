// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>

namespace lumora {

// Whether the metadata library parses the packet in a time that grows with its length. It looks through all
// properties of one holder for each further one, so that thousands of them take minutes, and it follows what
// is nested by calls of its own, so that deep nesting ends the program. Linear; any thread.
bool isReasonableXmp(std::string_view packet);

} // namespace lumora
