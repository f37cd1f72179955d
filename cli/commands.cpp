// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/commands.h"

#include "cli/options.h"
#include "cli/usage_error.h"

#include <charconv>

namespace lumora::cli {

namespace {

std::int64_t batchNumber(const std::string& text)
{
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || number < 1)
        throw UsageError{"undo takes the number of a batch, not '" + text + "'"};
    return number;
}

} // namespace

Action commandIn(const std::vector<std::string>& arguments)
{
    if (!arguments.empty() && arguments.front() == "undo") return Action::undo;
    if (!arguments.empty() && arguments.front() == "history") return Action::showHistory;
    return Action::optimize;
}

void checkGoesWith(Action action, const Option& option)
{
    const unsigned command = action == Action::undo          ? forUndo
                             : action == Action::showHistory ? forHistory
                                                             : forOptimizing;
    if ((option.commands & command) != 0) return;
    const std::string name = "--" + std::string(option.name);
    if (command == forOptimizing) throw UsageError{name + " goes with the command history only"};
    throw UsageError{name + " does not go with the command " + (command == forUndo ? "undo" : "history")};
}

void takeOperands(CommandLine& line, const std::vector<std::string>& operands)
{
    if (line.action == Action::optimize) {
        line.paths.assign(operands.begin(), operands.end());
        if (line.paths.empty()) throw UsageError{"no files or folders given"};
        return;
    }
    const std::size_t most = line.action == Action::undo ? 1 : 0;
    if (operands.size() > most) throw UsageError{"'" + operands.back() + "' is one argument too many"};
    if (!operands.empty()) line.batch = batchNumber(operands.front());
}

} // namespace lumora::cli
