// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace lumora::cli {

// The man page with its list of options made anew of the table; all around the two marks stays.
std::string withOptions(const std::string& page);

} // namespace lumora::cli
