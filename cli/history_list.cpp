// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/history_list.h"

#include "cli/console.h"
#include "cli/json_line.h"
#include "cli/printable.h"
#include "history/history.h"
#include "model/stats_store.h"
#include "system/byte_count_text.h"

#include <array>
#include <ctime>
#include <string>

namespace lumora::cli {

namespace {

std::string timeText(std::int64_t time, const char* format, bool isLocal)
{
    const std::time_t seconds = time;
    std::tm parts{};
    if (isLocal)
        ::localtime_r(&seconds, &parts);
    else
        ::gmtime_r(&seconds, &parts);
    std::array<char, 64> text{};
    std::strftime(text.data(), text.size(), format, &parts);
    return text.data();
}

std::string counted(std::int64_t count, const std::string& noun)
{
    return std::to_string(count) + " " + noun + (count == 1 ? "" : "s");
}

// "12  2026-11-22 10:30  lumora-cli  3 files, 2 written, 1 undone  saved 1.5 MB  webp, quality 82".
std::string row(const BatchSummary& summary)
{
    const std::int64_t saved = summary.originalBytes - summary.outputBytes;
    std::string text = std::to_string(summary.batch.id) + "  " +
                       timeText(summary.batch.time, "%Y-%m-%d %H:%M", true) + "  " + summary.batch.origin +
                       "  " + counted(summary.files, "file") + ", " + std::to_string(summary.written) +
                       " written";
    if (summary.undone > 0) text += ", " + std::to_string(summary.undone) + " undone";
    text += saved >= 0 ? "  saved " + byteCountText(saved) : "  added " + byteCountText(-saved);
    return printable(text + "  " + summary.batch.settings);
}

std::string jsonRow(const BatchSummary& summary)
{
    return "{\"batch\":" + std::to_string(summary.batch.id) +
           ",\"time\":" + jsonString(timeText(summary.batch.time, "%Y-%m-%dT%H:%M:%SZ", false)) +
           ",\"origin\":" + jsonString(summary.batch.origin) +
           ",\"settings\":" + jsonString(summary.batch.settings) +
           ",\"files\":" + std::to_string(summary.files) + ",\"written\":" + std::to_string(summary.written) +
           ",\"undone\":" + std::to_string(summary.undone) +
           ",\"originalBytes\":" + std::to_string(summary.originalBytes) +
           ",\"outputBytes\":" + std::to_string(summary.outputBytes) + "}";
}

int list(const CommandLine& line, History& history, Console& console)
{
    const auto batches = history.batches();
    if (!batches) {
        console.complain("the history cannot be read");
        return 1;
    }
    if (batches->empty() && !line.json) console.result("Nothing is remembered.");
    for (const BatchSummary& summary : *batches)
        console.result(line.json ? jsonRow(summary) : row(summary));
    return console.resultsFailed() ? 1 : 0;
}

} // namespace

int showHistory(const CommandLine& line, Console& console)
{
    History history(History::fileIn(StatsStore::userDataFolder()),
                    [&console](const std::string& complaint) { console.complain(complaint); });
    bool isDone = true;
    if (line.keepFiles || line.keepDays) {
        const HistoryLimits old = history.limits();
        isDone = history.setLimits({line.keepFiles.value_or(old.files), line.keepDays.value_or(old.days)});
    }
    if (line.clearHistory) isDone = history.clear() && isDone;
    const bool isChange = line.clearHistory || line.keepFiles || line.keepDays;
    if (!isChange) return list(line, history, console);
    if (!isDone) console.complain("the history could not be changed");
    return isDone ? 0 : 1;
}

} // namespace lumora::cli
