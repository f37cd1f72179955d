// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_files_model.h"

#include "history/history.h"
#include "model/history_reader.h"
#include "ui/controls/path_text.h"
#include "ui/history/file_texts.h"

#include <algorithm>

namespace lumora {
namespace {

using Records = std::shared_ptr<const std::vector<FileRecord>>;

// Of more files than can be in sight for a while, the places are not kept.
constexpr std::size_t mostPlaces = 4096;

std::vector<std::int64_t> numbersOf(const std::vector<FoundFile>& files)
{
    std::vector<std::int64_t> numbers;
    numbers.reserve(files.size());
    for (const FoundFile& file : files)
        numbers.push_back(file.id);
    return numbers;
}

} // namespace

HistoryFilesModel::HistoryFilesModel(HistoryReader& reader, QObject* parent)
    : ComparableResults(parent), m_reader(reader),
      m_placesReader([this](std::int64_t file, const FilePlaces& places) { takePlaces(file, places); })
{
}

void HistoryFilesModel::show(const FileQuery& query)
{
    m_query = query;
    refresh();
}

// One question at a time: who types fast asks for the last name only.
void HistoryFilesModel::refresh()
{
    m_asksAgain = m_isAsking;
    if (!m_isAsking) ask();
}

void HistoryFilesModel::ask()
{
    m_isAsking = true;
    m_asksAgain = false;
    m_reader.ask(
        [query = m_query](History& history) -> Found {
            auto found = history.find(query);
            return std::make_shared<std::vector<FoundFile>>(found ? std::move(*found)
                                                                  : std::vector<FoundFile>());
        },
        [this](const Found& found) {
            if (m_asksAgain) return ask();
            m_isAsking = false;
            take(found);
        });
}

// Rows that are the same as before stay as they are, with what is chosen among them.
void HistoryFilesModel::take(const Found& found)
{
    const bool isSame = std::ranges::equal(*found, *m_found, {}, &FoundFile::id, &FoundFile::id);
    ++m_listing;
    if (!isSame) beginResetModel();
    m_found = found;
    m_pages.begin(numbersOf(*found), isSame);
    m_placesReader.forgetTrash();
    m_lookedUp.clear();
    if (isSame) {
        if (rowCount() > 0) Q_EMIT dataChanged(index(0), index(rowCount() - 1));
    } else {
        m_inSight = {0, -1};
        endResetModel();
    }
    wantRows(m_inSight.first, m_inSight.second);
    Q_EMIT listed();
}

void HistoryFilesModel::lookAgain()
{
    m_placesReader.forgetTrash();
    m_lookedUp.clear();
    lookUp(m_inSight.first, m_inSight.second);
}

void HistoryFilesModel::wantRows(int first, int last)
{
    m_inSight = {first, last};
    while (const std::optional<int> page = m_pages.nextToRead(first, last))
        read(*page);
    lookUp(first, last);
}

void HistoryFilesModel::read(int page)
{
    m_reader.ask(
        [files = m_pages.filesOf(page)](History& history) -> Records {
            auto records = history.filesNumbered(files);
            return std::make_shared<std::vector<FileRecord>>(records ? std::move(*records)
                                                                     : std::vector<FileRecord>());
        },
        [this, page, listing = m_listing](const Records& records) {
            if (listing != m_listing) return;
            m_pages.take(page, *records);
            const int first = page * FilePages::rowsOfAPage;
            Q_EMIT dataChanged(index(first), index(std::min(first + FilePages::rowsOfAPage, rowCount()) - 1));
            lookUp(m_inSight.first, m_inSight.second);
        });
}

void HistoryFilesModel::lookUp(int first, int last)
{
    std::vector<FileRecord> wanted;
    for (int row = first; row <= last && row < rowCount(); ++row) {
        const FileRecord* file = m_pages.record(row);
        if (file && !m_lookedUp.contains(file->id)) wanted.push_back(*file);
    }
    m_placesReader.want(std::move(wanted));
}

void HistoryFilesModel::takePlaces(std::int64_t file, const FilePlaces& places)
{
    if (m_places.size() >= mostPlaces) {
        m_places.clear();
        m_lookedUp.clear();
    }
    m_lookedUp.insert(file);
    m_places[file] = places;
    for (int row = m_inSight.first; row <= m_inSight.second && row < rowCount(); ++row) {
        if ((*m_found)[static_cast<std::size_t>(row)].id == file) Q_EMIT dataChanged(index(row), index(row));
    }
}

const FoundFile& HistoryFilesModel::found(const QModelIndex& index) const
{
    return m_found->at(static_cast<std::size_t>(index.row()));
}

const FileRecord* HistoryFilesModel::record(const QModelIndex& index) const
{
    return m_pages.record(index.row());
}

std::optional<FilePlaces> HistoryFilesModel::places(const QModelIndex& index) const
{
    const auto places = m_places.find(found(index).id);
    return places == m_places.end() ? std::nullopt : std::optional(places->second);
}

int HistoryFilesModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_found->size());
}

QVariant HistoryFilesModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid)) return {};
    const FileRecord* file = record(index);
    if (!file) return {};
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return fileNameText(file->source);
    case Qt::AccessibleDescriptionRole:
        return spokenFile(*file, places(index));
    case Qt::ToolTipRole:
        return fileToolTip(*file);
    default:
        return {};
    }
}

Qt::ItemFlags HistoryFilesModel::flags(const QModelIndex& index) const
{
    return ComparableResults::flags(index) | Qt::ItemNeverHasChildren;
}

bool HistoryFilesModel::isComparable(const QModelIndex& index) const
{
    return found(index).hasOutput;
}

std::optional<ProcessingResult> HistoryFilesModel::comparedResult(const QModelIndex& index)
{
    const FileRecord* file = record(index);
    if (!file) {
        if (const auto page = m_pages.nextToRead(index.row(), index.row())) read(*page);
        return std::nullopt;
    }
    ProcessingResult result = resultOf(*file);
    result.id = m_compared.try_emplace(file->id, result.id).first->second;
    return result;
}

QModelIndex HistoryFilesModel::rowOf(const Uuid& result) const
{
    const auto compared =
        std::ranges::find(m_compared, result, [](const auto& entry) { return entry.second; });
    if (compared == m_compared.end()) return {};
    const auto found = std::ranges::find(*m_found, compared->first, &FoundFile::id);
    return found == m_found->end() ? QModelIndex() : index(static_cast<int>(found - m_found->begin()));
}

} // namespace lumora
