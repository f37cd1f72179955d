// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Which of the named paths led to no image, and why. The walk passes silently over them; who named one wants
// to know. Any thread; asks the disk.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lumora::cli {

// One complaint for each, in the order in which they were named. `images` is all that the named paths led to.
std::vector<std::string> complaintsAboutUnused(const std::vector<std::filesystem::path>& named,
                                               const std::vector<std::filesystem::path>& images);

} // namespace lumora::cli
