// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The images that the named paths lead to, and a word about what led to none. The walk passes silently over
// it; who named it wants to know. Any thread.
#pragma once

#include <filesystem>
#include <stop_token>
#include <string>
#include <vector>

namespace lumora::cli {

struct NamedImages
{
    std::vector<std::filesystem::path> images;
    // One for each path that contributed nothing, in the order in which they were named, then one for each
    // folder inside them that could not be read. Empty when the stop came first.
    std::vector<std::string> complaints;
};

NamedImages findImages(const std::vector<std::filesystem::path>& named, const std::stop_token& stop = {});

} // namespace lumora::cli
