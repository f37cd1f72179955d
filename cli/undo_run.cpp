// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/undo_run.h"

#include "cli/console.h"
#include "cli/json_line.h"
#include "cli/printable.h"
#include "history/history.h"
#include "history/undo.h"
#include "model/stats_store.h"

#include <algorithm>
#include <optional>
#include <string>

namespace lumora::cli {

namespace {

std::string jsonRow(const UndoneFile& file)
{
    return "{\"source\":" + jsonString(file.source.native()) +
           ",\"output\":" + jsonString(file.output.native()) + ",\"message\":" + jsonString(file.message) +
           ",\"success\":" + (file.isUndone ? "true" : "false") + "}";
}

std::string row(const UndoneFile& file)
{
    return printable(file.source.native()) + " -> " + printable(file.output.native()) + ": " +
           printable(file.message);
}

struct Tally
{
    int files = 0;
    int undone = 0;
};

std::string summary(const Tally& tally, std::int64_t batch, bool isDryRun)
{
    return "Batch " + std::to_string(batch) + ": " + std::to_string(tally.undone) + " of " +
           std::to_string(tally.files) + (isDryRun ? " would be undone" : " undone");
}

int undo(const CommandLine& line, Console& console, History& history, std::int64_t batch)
{
    Tally tally;
    const auto report = [&](const UndoneFile& file) {
        ++tally.files;
        tally.undone += file.isUndone ? 1 : 0;
        if (line.json)
            console.result(jsonRow(file));
        else if (!line.quiet || !file.isUndone)
            console.result(row(file));
    };
    const UndoMode mode = line.dryRun ? UndoMode::dryRun : UndoMode::forReal;
    if (!undoBatch(history, batch, mode, report)) return 1;
    if (!line.json && !line.quiet) console.result(summary(tally, batch, line.dryRun));
    return tally.undone == tally.files && !console.resultsFailed() ? 0 : 1;
}

} // namespace

int undo(const CommandLine& line, Console& console)
{
    History history(History::fileIn(StatsStore::userDataFolder()),
                    [&console](const std::string& complaint) { console.complain(complaint); });
    const auto batches = history.batches();
    if (!batches) {
        console.complain("the history cannot be read");
        return 1;
    }
    if (batches->empty()) {
        console.complain("nothing is remembered that could be undone");
        return 1;
    }
    const std::int64_t wanted = line.batch.value_or(batches->front().batch.id);
    const auto found =
        std::ranges::find(*batches, wanted, [](const BatchSummary& summary) { return summary.batch.id; });
    const std::string name = "batch " + std::to_string(wanted);
    if (found == batches->end())
        console.complain("no " + name + " is remembered; see lumora-cli history");
    else if (found->written == 0)
        console.complain(name + " wrote nothing that could be undone");
    else
        return undo(line, console, history, wanted);
    return 1;
}

} // namespace lumora::cli
