// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace lumora::cli {

// The text of --help, at most 80 columns wide.
std::string helpText();

} // namespace lumora::cli
