// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The kinds of values that options take, each bound to the member of CommandLine that it is for. The default
// that is told is what the member holds in a command line without options.
#pragma once

#include "cli/command_line.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lumora::cli {

// What was given, with the long name of its option for complaints.
struct GivenOption
{
    std::string_view name;
    bool negated;
    std::string value; // empty when the option takes none
};

struct OptionValue
{
    std::string_view argument;        // what stands for it in the help; empty when the option takes none
    std::vector<std::string> choices; // the only values allowed; empty when others are
    std::string standard;             // the default in words; empty when there is none to tell
    // Throws UsageError.
    std::function<void(CommandLine&, const GivenOption&)> apply;
};

// Turns a switch on, or off by its negation.
OptionValue onOrOff(bool CommandLine::*member);
// Ends the reading of options.
OptionValue ending(Action action);
// From 1 to 100, fractions too.
OptionValue percentage(double CommandLine::*member);
OptionValue count(std::int64_t CommandLine::*member);
OptionValue count(std::optional<int> CommandLine::*member);
OptionValue count(std::optional<std::int64_t> CommandLine::*member);
// Part of a file name.
OptionValue nameFragment(std::string CommandLine::*member);
OptionValue folder(std::optional<std::filesystem::path> CommandLine::*member);

// One of an enum's cases, which are numbered from zero and called so; webp-lossless is webpLossless.
std::size_t chosen(const GivenOption& given, const std::vector<std::string>& names);
template <class Enum>
OptionValue choice(std::string_view argument, Enum CommandLine::*member, std::vector<std::string> names)
{
    const std::string standard = names.at(static_cast<std::size_t>(CommandLine{}.*member));
    auto apply = [member, names](CommandLine& line, const GivenOption& given) {
        line.*member = static_cast<Enum>(chosen(given, names));
    };
    return {argument, std::move(names), standard, std::move(apply)};
}
template <class Enum>
OptionValue choice(std::string_view argument, Enum CommandLine::*member)
{
    std::vector<std::string> names;
    names.reserve(allCases<Enum>.size());
    for (const Enum value : allCases<Enum>)
        names.emplace_back(rawValue(value));
    return choice(argument, member, std::move(names));
}

} // namespace lumora::cli
