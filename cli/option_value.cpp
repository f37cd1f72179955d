// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/option_value.h"

#include "cli/usage_error.h"
#include "system/ascii.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace lumora::cli {

namespace {

UsageError complaint(const GivenOption& given, const std::string& wanted)
{
    return {"--" + std::string(given.name) + " takes " + wanted + ", not '" + given.value + "'"};
}

// The comparison is written so that NaN is refused.
template <class Number>
Number numberWithin(const GivenOption& given, Number least, Number most, const std::string& range)
{
    Number value{};
    const char* end = given.value.data() + given.value.size();
    const auto [stop, error] = std::from_chars(given.value.data(), end, value);
    if (error == std::errc() && stop == end && value >= least && value <= most) return value;
    throw complaint(given, "a number " + range);
}

template <class Number>
Number atLeastOne(const GivenOption& given)
{
    return numberWithin(given, Number{1}, std::numeric_limits<Number>::max(), "of at least 1");
}

// "webpLossless" as people write it on command lines: "webp-lossless".
std::string hyphenated(std::string_view name)
{
    std::string word;
    for (const char c : name) {
        if (c >= 'A' && c <= 'Z')
            word.append({'-', asciiLower(c)});
        else
            word += c;
    }
    return word;
}

// Without trailing zeros.
std::string shortest(double number)
{
    char text[32];
    const auto [end, error] = std::to_chars(std::begin(text), std::end(text), number);
    return {text, end};
}

} // namespace

OptionValue onOrOff(bool CommandLine::*member)
{
    return {{}, {}, CommandLine{}.*member ? "on" : "", [member](CommandLine& line, const GivenOption& given) {
                line.*member = !given.negated;
            }};
}

OptionValue ending(Action action)
{
    return {{}, {}, {}, [action](CommandLine& line, const GivenOption&) { line.action = action; }};
}

OptionValue percentage(double CommandLine::*member)
{
    return {"N", {}, shortest(CommandLine{}.*member), [member](CommandLine& line, const GivenOption& given) {
                line.*member = numberWithin(given, 1.0, 100.0, "from 1 to 100");
            }};
}

OptionValue count(std::int64_t CommandLine::*member)
{
    return {"N",
            {},
            std::to_string(CommandLine{}.*member),
            [member](CommandLine& line, const GivenOption& given) {
                line.*member = atLeastOne<std::int64_t>(given);
            }};
}

template <class Number>
OptionValue countOrNone(std::optional<Number> CommandLine::*member)
{
    return {"N", {}, {}, [member](CommandLine& line, const GivenOption& given) {
                line.*member = atLeastOne<Number>(given);
            }};
}

OptionValue count(std::optional<int> CommandLine::*member)
{
    return countOrNone(member);
}

OptionValue count(std::optional<std::int64_t> CommandLine::*member)
{
    return countOrNone(member);
}

OptionValue nameFragment(std::string CommandLine::*member)
{
    return {"TEXT", {}, CommandLine{}.*member, [member](CommandLine& line, const GivenOption& given) {
                if (given.value.find('/') != std::string::npos)
                    throw UsageError{"--" + std::string(given.name) +
                                     " is part of a file name and cannot hold '/'"};
                line.*member = given.value;
            }};
}

OptionValue folder(std::optional<std::filesystem::path> CommandLine::*member)
{
    return {"DIR", {}, {}, [member](CommandLine& line, const GivenOption& given) {
                if (given.value.empty())
                    throw UsageError{"--" + std::string(given.name) + " takes the name of a folder"};
                line.*member = given.value;
            }};
}

std::size_t chosen(const GivenOption& given, const std::vector<std::string>& names)
{
    const auto place = std::ranges::find_if(names, [&](const std::string& name) {
        return given.value == name || given.value == hyphenated(name);
    });
    if (place != names.end()) return static_cast<std::size_t>(place - names.begin());
    std::string list;
    for (const std::string& name : names)
        list += (list.empty() ? "" : ", ") + name;
    throw complaint(given, "one of " + list);
}

} // namespace lumora::cli
