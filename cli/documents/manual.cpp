// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/documents/manual.h"

#include "cli/documents/words.h"
#include "cli/options.h"

#include <stdexcept>

namespace lumora::cli {

namespace {

constexpr std::string_view begin = ".\\\" Made by the target cli-documents from here\n";
constexpr std::string_view end = ".\\\" to here\n";

std::string troff(std::string_view text)
{
    return replaced(text, '-', "\\-");
}

std::string bold(std::string_view text)
{
    return "\\fB" + troff(text) + "\\fR";
}

std::string signature(const Option& option)
{
    std::string text = option.letter ? bold(std::string{'-', option.letter}) + ", " : "";
    text += bold("--" + std::string(option.name));
    if (!option.negation.empty()) text += ", " + bold("--no-" + std::string(option.name));
    if (!option.value.argument.empty()) text += "=\\fI" + std::string(option.value.argument) + "\\fR";
    return text;
}

// ": webp (the default), jpeg or png".
std::string choices(const OptionValue& value)
{
    std::string text;
    for (const std::string& choice : value.choices) {
        const bool isLast = &choice == &value.choices.back();
        text += text.empty() ? ": " : isLast ? " or " : ", ";
        text += bold(choice);
        if (choice == value.standard) text += " (the default)";
    }
    return text;
}

std::string sentence(const Option& option)
{
    std::string text = troff(capitalized(option.help));
    const OptionValue& value = option.value;
    if (!value.choices.empty())
        text += choices(value);
    else if (value.argument.empty() && !value.standard.empty())
        text += " (the default)";
    else if (!value.standard.empty())
        text += "; " + troff(value.standard) + " by default";
    if (!option.negation.empty()) text += ", or " + troff(option.negation);
    return text + troff(option.note) + ".\n";
}

std::string entry(const Option& option)
{
    std::string text;
    if (!option.heading.empty()) text += ".SS " + std::string(option.heading) + "\n";
    text += ".TP\n" + signature(option) + "\n" + sentence(option);
    if (!option.manual.empty()) text += troff(option.manual) + "\n";
    return text;
}

} // namespace

std::string withOptions(const std::string& page)
{
    const std::size_t first = page.find(begin);
    const std::size_t last = page.find(end);
    if (first == std::string::npos || last == std::string::npos || last < first)
        throw std::invalid_argument("the man page has no marks around its options");
    std::string entries;
    for (const Option& option : options())
        entries += entry(option);
    return page.substr(0, first + begin.size()) + entries + page.substr(last);
}

} // namespace lumora::cli
