// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the history and the questions about them. One thread at a time; failures are SqliteErrors.
#pragma once

#include "history/history_records.h"
#include "history/sqlite.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

class HistoryDatabase
{
public:
    using Complain = std::function<void(const std::string&)>;

    // Without trust every page of the file is looked at, else its head.
    enum class Trust { full, none };

    // Opens it or makes it. A damaged or newer one is set aside, which `complain` is told.
    HistoryDatabase(const std::filesystem::path& file, const Complain& complain, Trust trust = Trust::full);

    // In the caller's transaction. Returns the batch's number.
    std::int64_t addBatch(const BatchRecord& batch);
    void addFile(std::int64_t batch, const FileRecord& file);
    // Drops what is beyond the limits.
    void prune(std::int64_t now);

    // The digests of what was written to this place from this source, in this size, and not undone.
    std::vector<std::string> digestsOf(const std::filesystem::path& output,
                                       const std::filesystem::path& source, std::int64_t size);
    // Whether anything was written in this size, of this content. A copy in the size of its original, which
    // has its content too, does not count.
    bool hasOutput(std::int64_t size);
    bool hasOutput(std::int64_t size, const std::string& digest);

    // Newest first.
    std::vector<BatchSummary> batches();
    // None when it is remembered no more.
    std::vector<BatchSummary> batch(std::int64_t id);
    // In the order in which they finished.
    std::vector<FileRecord> filesOf(std::int64_t batch);
    // Those of one batch in the order in which they finished, those of all the other way round.
    std::vector<FoundFile> find(const FileQuery& wanted);
    // Without those that are remembered no more.
    std::vector<FileRecord> filesNumbered(const std::vector<std::int64_t>& numbers);
    // At most one each.
    std::vector<FileRecord> lastOf(const std::filesystem::path& source, const std::filesystem::path& output);
    std::vector<BatchSummary> lastToUndo();
    // What the batches of these files made for their outputs, folders before those within them.
    std::vector<std::filesystem::path> foldersMadeWith(const std::vector<FileRecord>& files);
    void markUndone(const std::vector<std::int64_t>& files);

    HistoryLimits limits();
    void setLimits(const HistoryLimits& limits);
    // Forgets everything, on the disk too.
    void clear();

    Sqlite& sqlite() { return m_database; }

private:
    Statement rowToAdd();

    Sqlite m_database;
    std::optional<Statement> m_rowToAdd; // between two rows
};

} // namespace lumora
