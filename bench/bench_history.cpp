// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The history's figures: bench_history rows [N] | undo [N] | list [N].
#include "history/file_state.h"
#include "history/undo.h"
#include "system/content_digest.h"
#include "system/regular_file.h"
#include "system/trash.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace lumora {
namespace {

using Clock = std::chrono::steady_clock;

double secondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double>(Clock::now() - begin).count();
}

double processorSeconds()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

FileRecord row(int number)
{
    const std::string name = "/home/somebody/Pictures/holiday/IMG_" + std::to_string(number);
    FileRecord file{.source = name + ".jpg",
                    .output = name + ".webp",
                    .originalBytes = 4'000'000,
                    .outputBytes = 900'000 + number,
                    .isSuccess = true,
                    .message = "Saved 3.1 MB"};
    file.trace.source = FileState{4'000'000, number};
    file.trace.output = FileState{900'000 + number, number};
    file.trace.outputDigest = "0123456789abcdef";
    return file;
}

void add(const std::filesystem::path& file, int count)
{
    History history(file);
    const auto batch = history.begin("bench", "webp");
    for (int number = 0; number < count; ++number)
        history.add(batch, row(number));
}

int rows(int count)
{
    const test::TemporaryDirectory folder;
    const double before = processorSeconds();
    const auto begin = Clock::now();
    add(folder / "history.sqlite", count);
    const double used = processorSeconds() - before;
    std::printf("%d rows of the history: %.1f us a file of processor time, %.1f us by the clock\n", count,
                used * 1e6 / count, secondsSince(begin) * 1e6 / count);
    return 0;
}

int list(int count)
{
    const test::TemporaryDirectory folder;
    add(folder / "history.sqlite", count);
    const auto begin = Clock::now();
    History history(folder / "history.sqlite");
    const std::size_t batches = history.batches().value().size();
    const double summed = secondsSince(begin);
    const std::size_t files = history.filesOf(1).value().size();
    std::printf(
        "history of %zu files in %zu batch opened and summed up: %.0f ms, all its rows read: %.0f ms\n",
        files, batches, summed * 1e3, secondsSince(begin) * 1e3);
    return 0;
}

// An original in the Trash and an output of 20 KB, as a batch of thumbnails leaves them.
FileRecord optimized(const std::filesystem::path& folder, int number)
{
    const std::string name = std::to_string(number);
    FileRecord file{
        .source = folder / (name + ".jpg"), .output = folder / (name + ".webp"), .isSuccess = true};
    test::writeFile(file.source, name);
    test::writeFile(*file.output, name + std::string(20'000, 'x'));
    file.trace.source = stateAt(file.source);
    file.trace.output = stateAt(*file.output);
    file.trace.outputDigest = contentDigest(openRegularFile(*file.output)->get()).value();
    const auto stamp = linkStamp(file.source);
    file.trace.isOriginalTrashed = static_cast<bool>(moveToTrash(file.source));
    file.trace.trashedOriginal = placeInTrash(file.source, *stamp);
    return file;
}

int undo(int count)
{
    const test::TemporaryDirectory folder;
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    History history(folder / "history.sqlite");
    const auto batch = history.begin("bench", "webp");
    for (int number = 0; number < count; ++number)
        history.add(batch, optimized(folder.path(), number));
    int undone = 0;
    static_cast<void>(history.batches()); // all are written
    const auto begin = Clock::now();
    undoBatch(history, 1, UndoMode::forReal,
              [&](const UndoneFile& file) { undone += file.isUndone ? 1 : 0; });
    const double time = secondsSince(begin);
    std::printf("%d of %d files undone: %.1f s, %.0f us a file\n", undone, count, time, time * 1e6 / count);
    return undone == count ? 0 : 1;
}

} // namespace
} // namespace lumora

int main(int argc, char** argv)
{
    const std::string_view what = argc > 1 ? argv[1] : "";
    const int count = argc > 2 ? std::atoi(argv[2]) : 0;
    if (what == "rows") return lumora::rows(count > 0 ? count : 100'000);
    if (what == "list") return lumora::list(count > 0 ? count : 200'000);
    if (what == "undo") return lumora::undo(count > 0 ? count : 10'000);
    std::fputs("usage: bench_history rows|list|undo [N]\n", stderr);
    return 2;
}
