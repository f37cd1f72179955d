// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/branded_window.h"
#include "tests/ui/gallery/gallery.h"
#include "tests/ui/history/history_window.h"
#include "ui/theme/fonts.h"

#include <QApplication>
#include <QDateTime>
#include <QMenu>

namespace lumora::gallery {
namespace {

using Window = test::HistoryWindow;

const char* const settingsOfBatches[] = {
    "WebP Lossy, quality 82, at most 2560 wide, sRGB, without profile, without metadata",
    "JPEG, quality 75, at most 1080 high, sRGB, to /home/someone/Pictures/Web", "WebP Lossless, not resized"};

// A day in the year, whenever the pictures are made.
void addBatch(Window& window, int number, std::int64_t daysAgo, const std::vector<FileRecord>& files)
{
    const auto batch =
        window.history->begin(number % 4 == 3 ? "lumora-cli" : "lumora", settingsOfBatches[number % 3]);
    const QDateTime time(QDate::currentDate().addDays(-daysAgo), QTime(23 - number % 14, (number * 17) % 60));
    batch->time = time.toSecsSinceEpoch();
    for (const FileRecord& file : files)
        window.history->add(batch, file);
    static_cast<void>(window.history->batches());
}

void addOldBatches(Window& window)
{
    for (int number = 40; number > 1; --number) {
        std::vector<FileRecord> files;
        for (int file = 0; file < 1 + (number * 7) % 12; ++file) {
            const std::string name = "/home/someone/Pictures/2026/IMG_" + std::to_string(number * 100 + file);
            files.push_back(
                Window::written(name + ".jpg", 4'100'000 + file * 97'000, 700'000 + number * 40'000));
        }
        addBatch(window, number, number < 5 ? 1 : number * number / 9, files);
    }
}

// Files in every state.
void addToday(Window& window)
{
    constexpr int written = 6;
    std::vector<FileRecord> files;
    files.reserve(written + 2);
    for (int number = 0; number < written; ++number)
        files.push_back(window.real("DSC_" + std::to_string(2107 + number * 3) + ".jpg"));
    std::filesystem::remove(*files[1].output);
    test::writeFile(*files[2].output, "changed since");
    std::filesystem::remove(files[3].source);
    for (FileRecord& file : files) {
        file.originalBytes = 6'400'000 + 210'000 * (&file - files.data());
        file.outputBytes = 1'200'000;
    }
    files.push_back(Window::failed(window.folder / "broken.png"));
    files.push_back({.source = window.folder / "small.jpg", .message = "Already optimized."});
    test::writeFile(window.folder / "small.jpg", "x");
    addBatch(window, 1, 0, files);
    const auto found = window.history->find({});
    window.history->markUndone({found->at(3).id, found->at(2).id});
}

void addAll(Window& window)
{
    addOldBatches(window);
    addToday(window);
}

void framed(const Gallery& gallery, QSize size)
{
    Window window;
    addAll(window);
    window.open();
    window.fileList().setCurrentIndex(window.files().index(2));
    QMenu menu;
    BrandedWindow frame({QStringLiteral("History"), QStringLiteral("h"), size, size}, window.view.release(),
                        menu);
    gallery.save(frame, QStringLiteral("window-history"));
}

} // namespace

void historyPages(const Gallery& gallery)
{
    const auto save = [&](const char* name, QSize size, auto prepare, auto change) {
        Window window;
        prepare(window);
        window.open();
        window.view->resize(size);
        change(window);
        window.settle();
        gallery.save(*window.view, QString::fromLatin1(name));
    };
    const auto nothing = [](Window&) {};
    const QSize usual(940, 680);
    save("history", usual, addAll,
         [](Window& window) { window.fileList().setCurrentIndex(window.files().index(1)); });
    framed(gallery, usual);
    save("history-empty", usual, nothing, nothing);
    save(
        "history-unreadable", usual,
        [](Window& window) {
            window.history = std::make_shared<History>("/dev/null/history.sqlite", [](const auto&) {});
        },
        nothing);
    const auto setAside = [](Window& window) {
        test::writeFile(window.history->file(), std::string(5000, 'x'));
    };
    save("history-set-aside-empty", usual, setAside, nothing);
    save(
        "history-set-aside", usual,
        [&](Window& window) {
            setAside(window);
            addToday(window);
        },
        nothing);
    save("history-search", usual, addAll, [](Window& window) { window.type("img_12"); });
    save("history-nothing-found", usual, addAll, [](Window& window) { window.type("nowhere"); });
    save("history-filtered", usual, addAll,
         [](Window& window) { window.search().setFilter(HistoryFilter::undone); });
    save("history-narrow", QSize(560, 400), addAll, nothing);
    save("history-narrow-search", QSize(560, 400), addAll, [](Window& window) { window.type("dsc"); });
    save("history-large", QSize(1500, 1000), addAll, nothing);
    save("history-right-to-left", usual, addAll,
         [](Window& window) { window.view->setLayoutDirection(Qt::RightToLeft); });
    save("history-focus", usual, addAll, [](Window& window) {
        window.fileList().setFocus();
        window.fileList().setCurrentIndex(window.files().index(2));
        window.view->activateWindow();
    });
    save(
        "history-long-names", usual,
        [](Window& window) {
            const std::string name("/in/"
                                   "Donaudampfschifffahrtsgesellschaftskapitänsmützenabzeichen-in-sehr-"
                                   "langer-Fassung-für-das-Archiv-7");
            addBatch(window, 1, 2,
                     {Window::written(name + ".tiff", 812'345'678, 12'345'678),
                      Window::written("/in/\xFF\n<b>not bold.jpg", 2'000, 3'000),
                      Window::written("/in/صورة من البحر.jpg", 5'000'000, 4'999'999)});
        },
        nothing);
    fonts::install(*qApp, 1.5);
    save("history-large-text", usual, addAll, nothing);
    save("history-large-text-narrow", QSize(560, 400), addAll, nothing);
    fonts::install(*qApp, 1);
}

} // namespace lumora::gallery
