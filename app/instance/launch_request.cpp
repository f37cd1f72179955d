// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/instance/launch_request.h"

#include "system/file_uris.h"

#include <algorithm>
#include <cctype>

namespace lumora {
namespace {

// "sftp://host/…", but not a file whose name holds "://" further on.
bool isAddress(const std::string& text)
{
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos || colon == 0) return false;
    const bool plainScheme =
        std::all_of(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(colon),
                    [](unsigned char c) { return std::isalnum(c) || c == '+' || c == '-' || c == '.'; });
    return plainScheme && (text.compare(colon, 3, "://") == 0 || text.starts_with("file:/"));
}

void addFile(const std::string& argument, LaunchArguments& parsed)
{
    if (!isAddress(argument)) {
        parsed.request.files.push_back(std::filesystem::absolute(argument));
    } else if (auto path = pathFromFileUri(argument)) {
        parsed.request.files.push_back(std::move(*path));
    } else {
        parsed.ignored.push_back(argument);
    }
}

void addOption(const std::string& option, LaunchArguments& parsed)
{
    if (option == "--help" || option == "-h") {
        parsed.kind = LaunchArguments::Kind::help;
    } else if (option == "--version") {
        parsed.kind = LaunchArguments::Kind::version;
    } else if (option == "--preferences") {
        parsed.request.preferences = true;
    } else {
        parsed.kind = LaunchArguments::Kind::wrong;
        parsed.complaint = "unknown option '" + option + "'";
    }
}

} // namespace

LaunchArguments parseLaunchArguments(const std::vector<std::string>& arguments)
{
    LaunchArguments parsed;
    bool onlyFiles = false;
    for (const std::string& argument : arguments) {
        if (argument.empty()) continue;
        if (!onlyFiles && argument == "--") {
            onlyFiles = true;
        } else if (!onlyFiles && argument.size() > 1 && argument.starts_with('-')) {
            if (parsed.kind == LaunchArguments::Kind::launch) addOption(argument, parsed);
        } else {
            addFile(argument, parsed);
        }
    }
    return parsed;
}

} // namespace lumora
