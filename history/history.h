// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The memory of what was done: which files a batch read and wrote, and where what it took away went. Rows are
// written by a thread of its own about once a second, so that a batch waits for no disk; a program that is
// killed loses the last ones. What goes wrong costs rows and never a picture: it is told once. Several
// programs may use one file. Any thread.
#pragma once

#include "history/history_database.h"
#include "history/history_records.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace lumora {

class History
{
public:
    using Complain = HistoryDatabase::Complain;

    // Lumora/history.sqlite in the user's data folder.
    static std::filesystem::path fileIn(const std::filesystem::path& dataFolder);
    // One line on standard error, after the name of the program.
    static void complainOnStandardError(const std::string& complaint);

    // Opened when it is first needed. A row waits so long for others, but the first one of a batch not at
    // all: a batch that is killed early is to be known.
    explicit History(std::filesystem::path file, Complain complain = complainOnStandardError,
                     std::chrono::milliseconds pace = std::chrono::seconds(1));
    // Writes what is left.
    ~History();
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    const std::filesystem::path& file() const { return m_file; }

    // A batch that is being done; it is remembered with its first file.
    using Batch = std::shared_ptr<BatchRecord>;
    Batch begin(std::string origin, std::string settings);
    void add(const Batch& batch, FileRecord file);

    // Whether the file is what we once made of this source and wrote to this place, untouched.
    bool isOwnOutput(const std::filesystem::path& output, const std::filesystem::path& source);
    // Whether the file's content is one that we wrote, wherever it lies now.
    bool isOptimized(const std::filesystem::path& file);

    // Newest first; absent when the history cannot be read, which was told then.
    std::optional<std::vector<BatchSummary>> batches();
    // That one; no batch when it is remembered no more.
    std::optional<std::vector<BatchSummary>> batch(std::int64_t id);
    // In the order in which they finished.
    std::optional<std::vector<FileRecord>> filesOf(std::int64_t batch);
    // Those of one batch in the order in which they finished, those of all batches the newest first.
    std::optional<std::vector<FoundFile>> find(const FileQuery& wanted);
    // Those with these FileRecord::id, in the order of these, without those that are remembered no more.
    std::optional<std::vector<FileRecord>> filesNumbered(const std::vector<std::int64_t>& numbers);
    // The last time that this source became this output, both spelled as resolvedPlace() does; no file when
    // that is not known.
    std::optional<std::vector<FileRecord>> lastOf(const std::filesystem::path& source,
                                                  const std::filesystem::path& output);
    // That of the newest output that was not taken back; no batch when there is none.
    std::optional<std::vector<BatchSummary>> lastToUndo();
    // What the batches of these files made for their outputs, folders before those within them; none when it
    // cannot be read.
    std::vector<std::filesystem::path> foldersMadeWith(const std::vector<FileRecord>& files);
    void markUndone(const std::vector<std::int64_t>& files);

    // What went wrong last, in words for people; empty when nothing did.
    std::string trouble();

    HistoryLimits limits();
    bool setLimits(const HistoryLimits& limits);
    // Forgets everything. False when it could not.
    bool clear();

private:
    using Row = std::pair<Batch, FileRecord>;

    using Task = std::function<void(HistoryDatabase&)>;
    enum class Outcome { done, busy, failed };

    bool use(const Task& task);
    Outcome attempt(const Task& task);
    void tryOnce(const Task& task);
    void complainOnce(const std::string& reason);
    bool isSomethingPending();
    void writePending();
    void writeRows(HistoryDatabase& database);
    static void write(HistoryDatabase& database, const std::vector<Row>& rows);
    void work(const std::stop_token& stop);

    const std::filesystem::path m_file;
    const Complain m_complain;
    const std::chrono::milliseconds m_pace;
    std::mutex m_using; // guards the next two
    std::unique_ptr<HistoryDatabase> m_database;
    bool m_hasComplained = false;
    std::mutex m_waiting; // guards the next four; never held while the disk is used
    std::vector<Row> m_pending;
    Batch m_latest;
    bool m_isUrgent = false;
    std::string m_trouble;
    std::condition_variable_any m_rowCame;
    std::jthread m_writer;
};

} // namespace lumora
