// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/command_line_parser.h"

#include "cli/commands.h"
#include "cli/options.h"

#include <getopt.h>

#include <algorithm>
#include <deque>

namespace lumora::cli {

namespace {

// What getopt_long returns for a long option: its place in the table, beyond every letter.
constexpr int firstPlain = 256;
constexpr int firstNegated = 1024;

// The table in getopt's own form. Owns the names that the form points to.
struct GetoptTable
{
    std::deque<std::string> names;
    std::vector<::option> longOptions;
    std::string letters = ":"; // tells a missing value from an unknown option

    GetoptTable()
    {
        for (std::size_t i = 0; i < options().size(); ++i)
            add(options()[i], static_cast<int>(i));
        longOptions.push_back({});
    }

    void add(const Option& option, int index)
    {
        const bool takesValue = !option.value.argument.empty();
        addLong(std::string(option.name), takesValue, firstPlain + index);
        if (!option.negation.empty()) addLong("no-" + std::string(option.name), false, firstNegated + index);
        if (!option.letter) return;
        letters += option.letter;
        if (takesValue) letters += ':';
    }

    void addLong(std::string name, bool takesValue, int code)
    {
        longOptions.push_back({names.emplace_back(std::move(name)).c_str(),
                               takesValue ? required_argument : no_argument, nullptr, code});
    }
};

void applyCode(int code, const char* value, CommandLine& line)
{
    const auto table = options();
    const auto apply = [&](const Option& option, bool negated) {
        checkGoesWith(line.action, option);
        option.value.apply(line, {option.name, negated, value ? value : ""});
    };
    if (code >= firstNegated)
        apply(table[static_cast<std::size_t>(code - firstNegated)], true);
    else if (code >= firstPlain)
        apply(table[static_cast<std::size_t>(code - firstPlain)], false);
    else
        apply(*std::ranges::find(table, static_cast<char>(code), &Option::letter), false);
}

UsageError complaint(int code, const std::string& argument)
{
    const bool isLetter = optopt > 0 && optopt < firstPlain;
    const std::string name =
        isLetter ? std::string{'-', static_cast<char>(optopt)} : argument.substr(0, argument.find('='));
    if (code == ':') return {name + " needs a value"};
    if (optopt >= firstPlain) return {name + " takes no value"};
    return {"unknown option " + name};
}

CommandLine parsed(const std::vector<std::string>& arguments)
{
    static const GetoptTable table;
    std::string program = "lumora-cli";
    CommandLine line;
    line.action = commandIn(arguments);
    const bool isCommand = line.action != Action::optimize;
    std::vector<std::string> copies(arguments.begin() + (isCommand ? 1 : 0), arguments.end());
    std::vector<char*> argv{program.data()};
    for (std::string& copy : copies)
        argv.push_back(copy.data());
    const int argc = static_cast<int>(argv.size());
    argv.push_back(nullptr);

    opterr = 0;
    optind = 0; // restarts the scan
    int code;
    while ((code = getopt_long(argc, argv.data(), table.letters.c_str(), table.longOptions.data(),
                               nullptr)) != -1) {
        if (code == '?' || code == ':') throw complaint(code, argv[static_cast<std::size_t>(optind - 1)]);
        applyCode(code, optarg, line);
        // Like everywhere: the first of --help and --version wins, whatever follows.
        if (line.action == Action::showHelp || line.action == Action::showVersion) return line;
    }
    takeOperands(line, {argv.begin() + optind, argv.begin() + argc});
    return line;
}

} // namespace

std::variant<CommandLine, UsageError> parseCommandLine(const std::vector<std::string>& arguments)
{
    try {
        return parsed(arguments);
    } catch (const UsageError& error) {
        return error;
    }
}

} // namespace lumora::cli
