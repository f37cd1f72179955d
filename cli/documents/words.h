// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Shaping the help's words for other readers.
#pragma once

#include <string>
#include <string_view>

namespace lumora::cli {

// With a capital first letter, as ASCII has it.
std::string capitalized(std::string_view text);

// With every such character replaced.
std::string replaced(std::string_view text, char what, std::string_view by);

} // namespace lumora::cli
