// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files of the history as rows: those of one batch, or those found in all. There may be 200,000: what is
// known of each is its number, the rest is read for the rows in sight, and so is where the files are by now.
// Main thread.
#pragma once

#include "records/uuid.h"
#include "ui/history/file_pages.h"
#include "ui/history/file_places_reader.h"
#include "ui/results/comparable_results.h"

#include <memory>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace lumora {

class HistoryReader;

class HistoryFilesModel : public ComparableResults
{
    Q_OBJECT

public:
    // The reader ends before the model does, or with it.
    explicit HistoryFilesModel(HistoryReader& reader, QObject* parent = nullptr);

    // Lists what is found as soon as it is; what was asked for before and is not found yet is asked no more.
    void show(const FileQuery& query);
    // The same anew: something has been done since.
    void refresh();
    // Looks up anew where the files in sight are.
    void lookAgain();
    // What the rows in sight need is read.
    void wantRows(int first, int last);

    const FoundFile& found(const QModelIndex& index) const;
    // Null while it is not read.
    const FileRecord* record(const QModelIndex& index) const;
    // Absent while it is not looked up.
    std::optional<FilePlaces> places(const QModelIndex& index) const;
    // Whether what is listed is what was asked for last.
    bool isListed() const { return !m_isAsking; }
    const FileQuery& query() const { return m_query; }

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    bool isComparable(const QModelIndex& index) const override;
    std::optional<ProcessingResult> comparedResult(const QModelIndex& index) override;
    QModelIndex rowOf(const Uuid& result) const override;

Q_SIGNALS:
    // What was asked for last is listed; rows that stayed may have changed.
    void listed();

private:
    using Found = std::shared_ptr<const std::vector<FoundFile>>;

    void ask();
    void take(const Found& found);
    void read(int page);
    void lookUp(int first, int last);
    void takePlaces(std::int64_t file, const FilePlaces& places);

    HistoryReader& m_reader;
    FileQuery m_query;
    bool m_isAsking = false;
    bool m_asksAgain = false;
    Found m_found = std::make_shared<std::vector<FoundFile>>();
    int m_listing = 0; // counts what was listed: what comes for an earlier one is dropped
    FilePages m_pages;
    std::pair<int, int> m_inSight{0, -1};
    std::unordered_map<std::int64_t, FilePlaces> m_places;
    std::unordered_set<std::int64_t> m_lookedUp; // those of them that count as true still
    std::unordered_map<std::int64_t, Uuid> m_compared;
    FilePlacesReader m_placesReader;
};

} // namespace lumora
