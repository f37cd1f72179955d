// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/help_text.h"

#include "cli/options.h"

namespace lumora::cli {

namespace {

constexpr std::size_t indentation = 28;
constexpr std::size_t lineWidth = 80;

std::string names(const Option& option)
{
    std::string text =
        option.letter ? std::string{' ', ' ', '-', option.letter, ',', ' '} : std::string(6, ' ');
    text += !option.negation.empty() ? "--[no-]" : "--";
    text += option.name;
    if (!option.value.argument.empty()) text += "=" + std::string(option.value.argument);
    return text;
}

std::string description(const Option& option)
{
    std::string text = std::string(option.help) + defaultText(option) + std::string(option.note);
    const auto& choices = option.value.choices;
    for (const std::string& choice : choices)
        text += (&choice == choices.data() ? ": " : ", ") + choice;
    return text;
}

// The words of `text` in lines that begin at the column of the descriptions.
void appendWrapped(std::string& help, const std::string& text, std::size_t column)
{
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        if (column > indentation && column + 1 + (end - start) > lineWidth) {
            help += "\n" + std::string(indentation, ' ');
            column = indentation;
        } else if (column > indentation) {
            help += ' ';
            ++column;
        }
        help += text.substr(start, end - start);
        column += end - start;
        start = end + 1;
    }
    help += '\n';
}

} // namespace

std::string helpText()
{
    std::string help = "Usage: lumora-cli [OPTION]... PATH...\n"
                       "       lumora-cli undo [BATCH] [--dry-run] [--json]\n"
                       "       lumora-cli history [--json] [--clear]\n"
                       "Optimizes images, and the images in folders, like the Lumora application;\n"
                       "takes a batch back; tells what was done.\n\n";
    for (const Option& option : options()) {
        const std::string left = names(option);
        help += left;
        if (left.size() + 2 > indentation)
            help += "\n" + std::string(indentation, ' ');
        else
            help += std::string(indentation - left.size(), ' ');
        appendWrapped(help, description(option), indentation);
    }
    help += "\nExit status: 0 when every file succeeded or was left alone by a switch; 1 when\n"
            "one failed or kept its existing output, or a named path led to no image; 2 for\n"
            "wrong usage; 130 when interrupted.\n";
    return help;
}

} // namespace lumora::cli
