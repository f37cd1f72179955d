// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What one launch of the program asks for, read from its arguments. A value.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lumora {

struct LaunchRequest
{
    std::vector<std::filesystem::path> files = {}; // absolute; names are bytes
    bool preferences = false;

    bool operator==(const LaunchRequest&) const = default;
};

struct LaunchArguments
{
    enum class Kind { launch, help, version, wrong };

    Kind kind = Kind::launch;
    LaunchRequest request;
    std::string complaint;            // of `wrong`
    std::vector<std::string> ignored; // addresses that lead to no file of this machine
};

// `arguments` without the program's name. Paths may be relative to the current folder; "file:" URIs count as
// the paths that they lead to; everything after "--" is a file.
LaunchArguments parseLaunchArguments(const std::vector<std::string>& arguments);

} // namespace lumora
