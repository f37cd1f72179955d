// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace lumora::cli {

// Arguments that make no sense.
struct UsageError
{
    std::string message; // one sentence without the program's name
};

} // namespace lumora::cli
