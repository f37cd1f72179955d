// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The views' figures: bench_ui start [ROUNDS] | rows [N] | settings | history [N] |
// comparison PICTURE WORKER. The picture
// has its output beside it, as a WebP file of its name; WORKER is the program that reads both.
#include "bench/fake_batch.h"
#include "history/history.h"
#include "model/lumora_settings.h"
#include "model/stats_store.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"
#include "ui/comparison/comparison_view.h"
#include "ui/dropwindow/drop_window_view.h"
#include "ui/history/batch_list_view.h"
#include "ui/history/history_files_model.h"
#include "ui/history/history_files_view.h"
#include "ui/history/history_view.h"
#include "ui/results/results_list_model.h"
#include "ui/results/results_list_view.h"
#include "ui/settings/preferences_view.h"
#include "ui/settings/settings_chip.h"
#include "ui/theme/fonts.h"
#include "ui/theme/lumora_style.h"
#include "ui/theme/surfaces.h"

#include <QApplication>
#include <QLineEdit>
#include <QPainter>
#include <QProcess>
#include <QScrollBar>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <string_view>

namespace lumora {
namespace {

using namespace bench;

// Drops are files already; each is optimized at once.
ProcessingServices promptServices()
{
    ProcessingServices services = fakeServices({});
    services.expand = [](const auto& items, const std::stop_token&) { return items; };
    services.debounce = std::chrono::milliseconds(0);
    return services;
}

struct Objects
{
    test::TemporaryDirectory folder;
    LumoraSettings settings{QString::fromStdString((folder / "Lumora.ini").string())};
    StatsStore stats{folder.path()};
    ProcessingModel model{[] { return test::settings(); }, &stats, promptServices()};
    // The first to hear of a row.
    Clock::time_point news;
    QMetaObject::Connection stamp =
        QObject::connect(&model, &ProcessingModel::resultInserted, &model, [this] { news = Clock::now(); });
    DropWindowView view{settings, model, stats, [] {}};

    void process(const Files& files)
    {
        const int expected = model.resultCount() + static_cast<int>(files.size());
        model.process(files);
        while (model.resultCount() < expected || model.isProcessing())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
};

// What the toolkit and the style cost by themselves.
class EmptyWindow : public QWidget
{
protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(rect(), windowGradient(rect(), layoutDirection()));
    }
};

class PaintWatch : public QObject
{
public:
    bool painted = false;

protected:
    bool eventFilter(QObject*, QEvent* event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return false;
    }
};

void dress(QApplication& application)
{
    QApplication::setStyle(new LumoraStyle);
    fonts::install(application, 1);
}

void showUntilPainted(QWidget& window)
{
    PaintWatch watch;
    window.installEventFilter(&watch);
    window.show();
    while (!watch.painted)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    QCoreApplication::processEvents();
}

void print(const char* what, std::vector<double> times)
{
    std::sort(times.begin(), times.end());
    std::printf("%-34s median %6.2f ms, 99th percentile %6.2f ms, most %6.2f ms\n", what,
                times.at(times.size() / 2), times.at(times.size() * 99 / 100), times.back());
}

// The process of one round: prints how long it took from its start, which the parent names in clock ticks.
int startOnce(int argc, char** argv)
{
    const Clock::time_point begin{Clock::duration(std::atoll(argv[3]))};
    QApplication application(argc, argv);
    dress(application);
    const auto report = [begin] { std::printf("%f\n", milliseconds(Clock::now() - begin)); };
    if (std::string_view(argv[2]) == "empty") {
        EmptyWindow window;
        window.resize(820, 360);
        showUntilPainted(window);
        report();
    } else {
        Objects objects;
        objects.view.resize(820, 360);
        showUntilPainted(objects.view);
        report();
    }
    return 0;
}

double timeOfStart(const char* program, const char* window)
{
    QProcess process;
    const qlonglong now = Clock::now().time_since_epoch().count();
    process.start(QString::fromLocal8Bit(program),
                  {QStringLiteral("once"), QString::fromLatin1(window), QString::number(now)});
    if (!process.waitForFinished() || process.exitCode() != 0) std::abort();
    return process.readAllStandardOutput().trimmed().toDouble();
}

int start(int argc, char** argv, int rounds)
{
    const QCoreApplication application(argc, argv);
    std::vector<double> empty;
    std::vector<double> window;
    for (int round = 0; round < rounds; ++round) {
        empty.push_back(timeOfStart(argv[0], "empty"));
        window.push_back(timeOfStart(argv[0], "window"));
    }
    print("first paint, empty window", empty);
    print("first paint, drop window", window);
    const auto median = [](std::vector<double>& times) {
        std::nth_element(times.begin(), times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2),
                         times.end());
        return times[times.size() / 2];
    };
    std::printf("  ratio %.2f\n", median(window) / median(empty));
    return 0;
}

void scrollByPages(QScrollBar& bar, const char* what = "scroll by a page")
{
    std::vector<double> times;
    for (int page = 0; page < 500; ++page) {
        const auto begin = Clock::now();
        bar.setValue(bar.value() + bar.pageStep());
        QCoreApplication::processEvents();
        times.push_back(milliseconds(Clock::now() - begin));
    }
    print(what, times);
}

// From the model's news of the row until everything is painted.
void insertRows(Objects& objects, const char* what)
{
    std::vector<double> times;
    for (int row = 0; row < 200; ++row) {
        objects.process({"/home/someone/Pictures/one more.jpg"});
        QCoreApplication::processEvents();
        times.push_back(milliseconds(Clock::now() - objects.news));
    }
    print(what, times);
}

int rows(int argc, char** argv, int count)
{
    QApplication application(argc, argv);
    dress(application);
    Objects objects;
    objects.process(fileNames(count));
    objects.view.resize(820, 922);
    showUntilPainted(objects.view);
    QScrollBar* bar = objects.view.findChild<ResultsListView*>()->verticalScrollBar();
    insertRows(objects, "insert a row, list at its top");
    scrollByPages(*bar);
    insertRows(objects, "insert a row, list scrolled");
    return 0;
}

int settings(int argc, char** argv)
{
    QApplication application(argc, argv);
    dress(application);
    Objects objects;
    PreferencesView preferences(objects.settings, objects.stats);
    showUntilPainted(objects.view);
    showUntilPainted(preferences);
    const auto chips = objects.view.findChildren<SettingsChip*>();
    std::vector<double> changes;
    for (int i = 0; i < 500; ++i) {
        const auto begin = Clock::now();
        objects.settings.quality.set(1 + i % 100);
        QCoreApplication::processEvents();
        changes.push_back(milliseconds(Clock::now() - begin));
    }
    print("a setting reaches both windows", changes);
    return chips[2]->text() == QStringLiteral("Quality 100") ? 0 : 1;
}

// From the double click on, which is the first that a window with its workers knows of it.
int comparison(int argc, char** argv)
{
    QApplication application(argc, argv);
    dress(application);
    Objects objects;
    objects.process({argv[2]});
    ResultsListModel results(objects.model);
    std::vector<double> first;
    std::vector<double> both;
    for (int round = 0; round < 21; ++round) {
        const auto begin = Clock::now();
        ComparisonView view(argv[3]);
        const auto* canvas = view.findChild<ComparisonCanvas*>();
        view.resize(view.sizeHint());
        view.compare(results, results.index(0));
        view.show();
        const auto until = [&](auto isReached) {
            while (!isReached())
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            QCoreApplication::processEvents();
            return milliseconds(Clock::now() - begin);
        };
        first.push_back(until([&] { return !canvas->isEmpty(); }));
        both.push_back(until([&] { return view.isComplete(); }));
        if (!canvas->hasBoth()) return 1;
    }
    print("comparison, first picture", first);
    print("comparison, both pictures", both);
    return 0;
}

// A year of batches of four files each.
void remember(const std::filesystem::path& file, int count)
{
    constexpr int filesOfABatch = 4;
    constexpr std::int64_t day = 86'400;
    HistoryDatabase database(file, History::complainOnStandardError);
    Transaction writing(database.sqlite());
    std::int64_t batch = 0;
    for (int number = 0; number < count; ++number) {
        const std::int64_t age = 360 * day - 360 * day * number / count;
        if (number % filesOfABatch == 0)
            batch = database.addBatch({0, std::time(nullptr) - age, "lumora",
                                       "webp, quality 82, maxWidth 2560, sRGB, metadata removed"});
        const std::string name =
            "/home/someone/Pictures/2026/A holiday by the sea/IMG_" + std::to_string(number);
        FileRecord record{.source = name + ".jpg",
                          .output = name + ".webp",
                          .originalBytes = 4'000'000,
                          .outputBytes = 900'000,
                          .isSuccess = true,
                          .message = "Optimized to WebP."};
        record.trace.output = FileState{900'000, number};
        record.trace.outputDigest = "0123456789abcdef";
        database.addFile(batch, record);
    }
    writing.commit();
}

int history(int argc, char** argv, int count)
{
    const test::TemporaryDirectory folder;
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    remember(folder / "history.sqlite", count);
    QApplication application(argc, argv);
    dress(application);
    const auto until = [](Clock::time_point begin, auto isReached) {
        while (!isReached())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        QCoreApplication::processEvents();
        return milliseconds(Clock::now() - begin);
    };
    std::vector<double> opened;
    std::vector<double> found;
    for (int round = 0; round < 7; ++round) {
        const auto begin = Clock::now();
        HistoryView view(std::make_shared<History>(folder / "history.sqlite"), {});
        const auto* files = view.findChild<HistoryFilesModel*>();
        view.resize(view.sizeHint());
        view.show();
        opened.push_back(
            until(begin, [&] { return files->rowCount() > 0 && files->record(files->index(0)); }));
        const auto typed = Clock::now();
        view.findChild<QLineEdit*>()->setText(QStringLiteral("img"));
        found.push_back(
            until(typed, [&] { return files->rowCount() == count && files->record(files->index(0)); }));
        if (round > 0) continue;
        scrollByPages(*view.findChild<HistoryFilesView*>()->verticalScrollBar(), "history, scroll all files");
        view.findChild<QLineEdit*>()->clear();
        scrollByPages(*view.findChild<BatchListView*>()->verticalScrollBar(), "history, scroll batches");
    }
    print("history, until files are shown", opened);
    print("history, search that finds all", found);
    return 0;
}

} // namespace
} // namespace lumora

int main(int argc, char** argv)
try {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    const std::string_view what = argc > 1 ? argv[1] : "";
    const auto count = [&](int otherwise) { return argc > 2 ? std::atoi(argv[2]) : otherwise; };
    if (what == "once" && argc == 4) return lumora::startOnce(argc, argv);
    if (what == "start") return lumora::start(argc, argv, count(41));
    if (what == "rows") return lumora::rows(argc, argv, count(100'000));
    if (what == "settings") return lumora::settings(argc, argv);
    if (what == "history") return lumora::history(argc, argv, count(200'000));
    if (what == "comparison" && argc == 4) return lumora::comparison(argc, argv);
    std::fputs("usage: bench_ui start [ROUNDS] | rows [N] | settings | history [N] | "
               "comparison PICTURE WORKER\n",
               stderr);
    return 2;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
