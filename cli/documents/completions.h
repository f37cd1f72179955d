// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The scripts of packaging/completions, whole, made of the table of options.
#pragma once

#include <string>

namespace lumora::cli {

std::string bashCompletion();
std::string zshCompletion();
std::string fishCompletion();

} // namespace lumora::cli
