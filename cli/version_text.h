// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace lumora::cli {

// The text of --version: the program's version and build, then one line for each library and for the WebP
// encoder.
std::string versionText();

} // namespace lumora::cli
