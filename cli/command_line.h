// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the user asked for on the command line. Parsing touches nothing but its arguments (and getopt's own
// state, so one thread at a time).
#pragma once

#include "records/optimizer_settings.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace lumora::cli {

enum class Action { optimize, showHelp, showVersion };
enum class Existing { replace, ask, skip };

struct CommandLine
{
    Action action = Action::optimize;
    std::vector<std::filesystem::path> paths; // at least one when the action is to optimize

    OutputFormat format = OutputFormat::webp;
    double quality = 82;
    ResizeMode resizeMode = ResizeMode::maxWidth;
    std::int64_t maximumPixels = 2560;
    bool sRGB = true;
    bool removeProfile = true;
    bool removeMetadata = true;
    std::optional<std::filesystem::path> outputDirectory;
    std::string prefix;
    std::string suffix;
    Existing existing = Existing::replace;
    bool trashOriginal = false;
    bool keepTime = true;

    std::optional<int> jobs;
    bool dryRun = false;
    bool json = false;
    bool quiet = false;
    bool recordStats = false;

    OptimizerSettings settings() const;
};

struct UsageError
{
    std::string message; // one sentence without the program's name
};

// `arguments` without the program's name. Options and paths may be mixed; everything after "--" is a path.
std::variant<CommandLine, UsageError> parseCommandLine(const std::vector<std::string>& arguments);

} // namespace lumora::cli
