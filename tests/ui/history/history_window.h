// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A history in a folder of its own, and the window's view of it.
#pragma once

#include "history/file_state.h"
#include "history/history.h"
#include "tests/app/wait_for.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"
#include "ui/history/batch_list_model.h"
#include "ui/history/batch_list_view.h"
#include "ui/history/history_files_model.h"
#include "ui/history/history_files_view.h"
#include "ui/history/history_search.h"
#include "ui/history/history_view.h"

#include <QCoreApplication>
#include <QLineEdit>

#include <cstdint>
#include <ctime>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace lumora::test {

struct HistoryWindow
{
    using Path = std::filesystem::path;

    HistoryWindow() { setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1); }

    static FileRecord written(const Path& source, std::int64_t before = 4'000'000,
                              std::int64_t after = 900'000)
    {
        return {.source = source,
                .output = Path(source).replace_extension(".webp"),
                .originalBytes = before,
                .outputBytes = after,
                .isSuccess = true,
                .message = "Optimized to WebP."};
    }
    static FileRecord failed(const Path& source)
    {
        return {.source = source, .message = "The image could not be read."};
    }
    // Both files, as a batch leaves them.
    FileRecord real(const std::string& name)
    {
        const Path source = folder / name;
        FileRecord file = written(source, 8, 4);
        writeFile(source, "original");
        writeFile(*file.output, "webp");
        file.trace.source = stateAt(source);
        file.trace.output = stateAt(*file.output);
        return file;
    }
    void add(const std::vector<FileRecord>& files, std::int64_t daysAgo = 0,
             const char* settings = "webp, quality 82")
    {
        const auto batch = history->begin("lumora", settings);
        batch->time -= daysAgo * 86'400;
        for (const FileRecord& file : files)
            history->add(batch, file);
        static_cast<void>(history->batches()); // all are written
    }

    HistoryActions actions()
    {
        return {.fileBrowser = {[this](const Path& file) { shown.push_back(file); },
                                [this](const Path& file) { opened.push_back(file); }},
                .undoBatch = [this](std::int64_t batch) { undoneBatches.push_back(batch); },
                .undoFiles =
                    [this](const std::vector<std::int64_t>& files) {
                        undoneFiles = history->filesNumbered(files).value();
                    }};
    }
    // Until the files of the newest batch are listed and read.
    void open() { open(actions()); }
    void open(const HistoryActions& given)
    {
        view = std::make_unique<HistoryView>(history, given);
        bool isRead = false;
        const QObject untilRead;
        QObject::connect(view.get(), &HistoryView::refreshed, &untilRead, [&] { isRead = true; });
        view->resize(view->sizeHint());
        view->show();
        view->activateWindow();
        waitFor([&] { return isRead; });
        settle();
    }
    bool settle()
    {
        return waitFor([this] {
            HistoryFilesModel& model = files();
            if (!model.isListed()) return false;
            const int height = fileList().viewport()->height();
            for (int y = 0; y < height; y += fileList().rowHeight()) {
                const QModelIndex row = fileList().indexAt(QPoint(0, y));
                if (row.isValid() && !(model.record(row) && model.places(row))) return false;
            }
            return true;
        });
    }

    BatchListView& batchList() { return *view->findChild<BatchListView*>(); }
    BatchListModel& batches() { return *view->findChild<BatchListModel*>(); }
    HistoryFilesView& fileList() { return *view->findChild<HistoryFilesView*>(); }
    HistoryFilesModel& files() { return *view->findChild<HistoryFilesModel*>(); }
    HistorySearch& search() { return *view->findChild<HistorySearch*>(); }
    QLineEdit& field() { return *view->findChild<QLineEdit*>(); }
    bool type(const char* text)
    {
        field().setText(QString::fromUtf8(text));
        return settle();
    }

    static QStringList textsOf(const QAbstractItemModel& model, int role = Qt::DisplayRole)
    {
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts << model.index(row, 0).data(role).toString();
        return texts;
    }

    TemporaryDirectory folder;
    std::shared_ptr<History> history =
        std::make_shared<History>(folder / "history.sqlite", [](const auto&) {});
    std::unique_ptr<HistoryView> view;
    std::vector<Path> shown;
    std::vector<Path> opened;
    std::vector<std::int64_t> undoneBatches;
    std::vector<FileRecord> undoneFiles;
};

} // namespace lumora::test
