// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The model's figures: bench_model results [N] | records [N] | drops [N] | scan FOLDER | settings.
#include "bench/fake_batch.h"
#include "engine/file_input_resolver.h"
#include "model/lumora_settings.h"
#include "model/stats_store.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace lumora {
namespace {

using namespace bench;

// How long each event holds the main thread.
class MeasuredApplication : public QCoreApplication
{
public:
    using QCoreApplication::QCoreApplication;

    bool notify(QObject* receiver, QEvent* event) override
    {
        const auto begin = Clock::now();
        const bool isHandled = QCoreApplication::notify(receiver, event);
        m_holds.push_back(milliseconds(Clock::now() - begin));
        return isHandled;
    }

    void printHolds()
    {
        std::sort(m_holds.begin(), m_holds.end());
        const std::size_t rank = m_holds.size() * 999 / 1000;
        std::printf(
            "  one event holds the main thread: 99.9th percentile %.2f ms, most %.2f ms (%zu events)\n",
            m_holds.at(rank), m_holds.back(), m_holds.size());
    }

private:
    std::vector<double> m_holds;
};

double residentBytes()
{
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE));
}

void runBatch(MeasuredApplication& application, int count, StatsStore* stats)
{
    ProcessingModel model([] { return test::settings(); }, stats, fakeServices(fileNames(count)));
    double startBytes = 0;
    QObject::connect(&model, &ProcessingModel::progressChanged, [&] {
        if (startBytes == 0 && model.totalCount() > 0) startBytes = residentBytes();
    });
    model.setOnComplete([&] { application.quit(); });
    model.process({"/folder"});
    const auto begin = Clock::now();
    application.exec();
    const double time = milliseconds(Clock::now() - begin);
    std::printf("%d results, %s: %.0f ms, %.1f us a result\n", count, stats ? "recorded" : "not recorded",
                time, time * 1000 / count);
    std::printf("  memory: %.0f bytes a row\n", (residentBytes() - startBytes) / count);
}

int results(int argc, char** argv, int count)
{
    for (const bool isRecorded : {false, true}) {
        for (const int part : {count / 4, count}) {
            const test::TemporaryDirectory directory;
            MeasuredApplication application(argc, argv);
            StatsStore stats(directory.path());
            runBatch(application, part, isRecorded ? &stats : nullptr);
            application.printHolds();
        }
    }
    return 0;
}

int records(int count)
{
    const test::TemporaryDirectory directory;
    StatsStore stats(directory.path());
    std::vector<double> times;
    for (int i = 0; i < count; ++i) {
        const auto begin = Clock::now();
        stats.record({"/in.jpg", "/out.webp", 4'000'000, 900'000, "Saved 77.5%", true});
        times.push_back(milliseconds(Clock::now() - begin));
    }
    std::sort(times.begin(), times.end());
    std::printf("stats.json written: median %.3f ms, 99.9th percentile %.2f ms, most %.2f ms\n",
                times.at(times.size() / 2), times.at(times.size() * 999 / 1000), times.back());
    return 0;
}

int drops(int argc, char** argv, int count)
{
    QCoreApplication application(argc, argv);
    ProcessingModel model([] { return test::settings(); }, nullptr, fakeServices({}));
    Files one(1);
    const auto begin = Clock::now();
    for (auto& name : fileNames(count)) {
        one.front() = std::move(name);
        model.process(one);
    }
    const double time = milliseconds(Clock::now() - begin);
    std::printf("%d drops in a burst: %.0f ms, %.2f us a drop\n", count, time, time * 1000 / count);
    return 0;
}

int scan(const char* folder)
{
    const auto begin = Clock::now();
    const auto found = FileInputResolver::imageURLs({folder});
    std::printf("scan: %zu images in %.0f ms\n", found.size(), milliseconds(Clock::now() - begin));
    return 0;
}

int settings(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const test::TemporaryDirectory directory;
    LumoraSettings settings(QString::fromStdString((directory / "Lumora.ini").string()));
    auto begin = Clock::now();
    for (int i = 0; i < 100; ++i)
        settings.quality.set(i);
    std::printf("setting written: %.0f us\n", milliseconds(Clock::now() - begin) * 10);
    begin = Clock::now();
    for (int i = 0; i < 10'000; ++i)
        static_cast<void>(settings.quality());
    std::printf("setting read: %.1f us\n", milliseconds(Clock::now() - begin) / 10);
    return 0;
}

} // namespace
} // namespace lumora

int main(int argc, char** argv)
try {
    const std::string_view what = argc > 1 ? argv[1] : "";
    const auto count = [&](int otherwise) { return argc > 2 ? std::atoi(argv[2]) : otherwise; };
    if (what == "results") return lumora::results(argc, argv, count(100'000));
    if (what == "records") return lumora::records(count(10'000));
    if (what == "drops") return lumora::drops(argc, argv, count(1'000'000));
    if (what == "scan" && argc > 2) return lumora::scan(argv[2]);
    if (what == "settings") return lumora::settings(argc, argv);
    std::fputs("usage: bench_model results [N] | records [N] | drops [N] | scan FOLDER | settings\n", stderr);
    return 2;
} catch (const std::exception& error) {
    std::fprintf(stderr, "%s\n", error.what());
    return 1;
}
