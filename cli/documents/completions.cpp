// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/documents/completions.h"

#include "cli/documents/words.h"
#include "cli/options.h"

namespace lumora::cli {

namespace {

// Says where the script comes from, so that nobody edits it by hand.
std::string head(const std::string& shell)
{
    return "# SPDX-FileCopyrightText: 2026 Tidewell\n"
           "# SPDX-License-Identifier: GPL-3.0-or-later\n"
           "# Completion of lumora-cli for " +
           shell + ", made by the target cli-documents.\n\n";
}

bool takesFolder(const Option& option)
{
    return option.value.argument == "DIR";
}

std::string longName(const Option& option)
{
    return "--" + std::string(option.name);
}

std::string negatedName(const Option& option)
{
    return "--no-" + std::string(option.name);
}

std::string joined(const std::vector<std::string>& words, const std::string& between)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : between) + word;
    return text;
}

std::vector<std::string> names(const Option& option)
{
    std::vector<std::string> result;
    if (option.letter) result.push_back({'-', option.letter});
    result.push_back(longName(option));
    if (!option.negation.empty()) result.push_back(negatedName(option));
    return result;
}

std::string bashCase(const Option& option)
{
    if (option.value.argument.empty()) return {};
    const std::string pattern = "    " + joined(names(option), " | ") + ")";
    if (takesFolder(option))
        return pattern + "\n"
                         "        compopt -o filenames 2>/dev/null\n"
                         "        mapfile -t COMPREPLY < <(compgen -d -- \"$word\")\n"
                         "        return\n"
                         "        ;;\n";
    if (option.value.choices.empty()) return pattern + " return ;;\n";
    return pattern + " values=\"" + joined(option.value.choices, " ") + "\" ;;\n";
}

std::string zshQuoted(const std::string& text)
{
    return "'" + replaced(text, '\'', "'\\''") + "'";
}

std::string zshArgument(const Option& option)
{
    if (option.value.argument.empty()) return {};
    std::string text = ":" + std::string(option.value.argument) + ":";
    if (takesFolder(option)) text += "_files -/";
    if (!option.value.choices.empty()) text += "(" + joined(option.value.choices, " ") + ")";
    return text;
}

std::string zshSpec(const Option& option)
{
    const std::string name = longName(option) + (option.value.argument.empty() ? "" : "=");
    const std::string rest = "[" + std::string(option.help) + "]" + zshArgument(option);
    if (option.letter) return "{-" + std::string{option.letter} + "," + name + "}" + zshQuoted(rest);
    if (option.negation.empty()) return zshQuoted(name + rest);
    const std::string negated = negatedName(option);
    return zshQuoted("(" + negated + ")" + name + rest) + " \\\n    " +
           zshQuoted("(" + name + ")" + negated + "[" + std::string(option.negation) + "]");
}

std::string fishLine(const std::string& options, std::string_view help)
{
    return "complete -c lumora-cli" + options + " -d '" + replaced(capitalized(help), '\'', "\\'") + "'\n";
}

std::string fishArgument(const Option& option)
{
    if (option.value.argument.empty()) return {};
    if (takesFolder(option)) return " -x -a '(__fish_complete_directories)'";
    return option.value.choices.empty() ? " -x" : " -x -a '" + joined(option.value.choices, " ") + "'";
}

} // namespace

std::string bashCompletion()
{
    std::string cases;
    std::vector<std::string> all;
    for (const Option& option : options()) {
        cases += bashCase(option);
        all.push_back(joined(names(option), " "));
    }
    return "# shellcheck shell=bash\n" + head("bash") + R"(_lumora_cli() {
    local word=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD-1]}
    local option=$previous
    # bash splits --format=webp into three words.
    if [[ $word == = ]]; then
        word=
    elif [[ $previous == = ]]; then
        option=${COMP_WORDS[COMP_CWORD-2]}
    fi
    local values=
    compopt +o default +o filenames 2>/dev/null
    case $option in
)" + cases +
           R"(    *)
        if [[ $word != -* ]]; then
            compopt -o default 2>/dev/null
            COMPREPLY=()
            return
        fi
        values=")" +
           joined(all, "\n            ") + R"("
        ;;
    esac
    mapfile -t COMPREPLY < <(compgen -W "$values" -- "$word")
}

complete -F _lumora_cli lumora-cli
)";
}

std::string zshCompletion()
{
    std::string script = "#compdef lumora-cli\n" + head("zsh") + "_arguments -S \\\n";
    for (const Option& option : options())
        script += "    " + zshSpec(option) + " \\\n";
    return script + "    '*:image or folder:_files'\n";
}

std::string fishCompletion()
{
    std::string script = head("fish");
    for (const Option& option : options()) {
        const std::string letter = option.letter ? " -s " + std::string{option.letter} : "";
        script += fishLine(letter + " -l " + std::string(option.name) + fishArgument(option), option.help);
        if (!option.negation.empty())
            script += fishLine(" -l no-" + std::string(option.name), option.negation);
    }
    return script;
}

} // namespace lumora::cli
