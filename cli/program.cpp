// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/program.h"

#include "cli/command_line_parser.h"
#include "cli/console.h"
#include "cli/dry_run.h"
#include "cli/help_text.h"
#include "cli/history_list.h"
#include "cli/session.h"
#include "cli/undo_run.h"
#include "cli/version_text.h"
#include "system/private_folder.h"

#include <QCoreApplication>

#include <unistd.h>

#include <csignal>
#include <exception>
#include <iostream>
#include <system_error>

namespace lumora::cli {

namespace {

constexpr int wrongUsage = 2;

int print(const std::string& text)
{
    std::cout << text << std::flush;
    return std::cout ? 0 : 1;
}

// What making the folder would say: a file where a folder has to be.
std::error_code obstacleTo(const std::filesystem::path& folder)
{
    std::filesystem::path existing = std::filesystem::absolute(folder);
    std::error_code missing;
    while (!std::filesystem::exists(existing, missing) && existing.has_relative_path())
        existing = existing.parent_path();
    if (std::filesystem::is_directory(existing, missing)) return {};
    return std::make_error_code(std::errc::not_a_directory);
}

// A dry run only asks whether it could.
bool makeOutputDirectory(const CommandLine& line, Console& console)
{
    if (!line.outputDirectory) return true;
    std::error_code error;
    if (line.dryRun)
        error = obstacleTo(*line.outputDirectory);
    else
        std::filesystem::create_directories(*line.outputDirectory, error);
    if (!error) return true;
    console.complain("cannot make the folder " + line.outputDirectory->native() + ": " + error.message());
    return false;
}

// What needs neither pictures nor an event loop.
int runCommand(const CommandLine& line)
{
    Console console({STDOUT_FILENO, STDERR_FILENO}, false);
    return line.action == Action::undo ? undo(line, console) : showHistory(line, console);
}

int optimize(const CommandLine& line)
{
    removeAbandonedFolders();
    // Qt's command line is not ours: it would take arguments such as -platform for itself.
    int argumentCount = 1;
    char name[] = "lumora-cli";
    char* argumentValues[] = {name, nullptr};
    QCoreApplication application(argumentCount, argumentValues);

    Console console({STDOUT_FILENO, STDERR_FILENO}, !line.quiet);
    if (!makeOutputDirectory(line, console)) return 1;
    return line.dryRun ? dryRun(line, console) : Session(line, console).run();
}

} // namespace

int runProgram(const std::vector<std::string>& arguments)
{
    // A reader that leaves early shows as a failed write, not as the end of the program in the middle of a
    // file.
    std::signal(SIGPIPE, SIG_IGN);
    // So is a file that grows beyond what the user may write.
    std::signal(SIGXFSZ, SIG_IGN);
    // Ignored, as a parent may leave it, the encoder's exit status would be lost.
    std::signal(SIGCHLD, SIG_DFL);
    const auto parsed = parseCommandLine(arguments);
    if (const auto* error = std::get_if<UsageError>(&parsed)) {
        Console({STDOUT_FILENO, STDERR_FILENO}, false).complain(error->message + "; see lumora-cli --help");
        return wrongUsage;
    }
    const auto& line = std::get<CommandLine>(parsed);
    switch (line.action) {
    case Action::showHelp:
        return print(helpText());
    case Action::showVersion:
        return print(versionText());
    case Action::undo:
    case Action::showHistory:
    case Action::optimize:
        break;
    }
    try {
        return line.action == Action::optimize ? optimize(line) : runCommand(line);
    } catch (const std::exception& error) {
        // Without a descriptor or memory to begin with.
        Console({STDOUT_FILENO, STDERR_FILENO}, false).complain(std::string("cannot start: ") + error.what());
        return 1;
    }
}

} // namespace lumora::cli
