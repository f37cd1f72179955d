// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/history_database.h"

#include "history/history_locks.h"
#include "history/history_schema.h"
#include "history/set_aside.h"
#include "system/ascii.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

namespace lumora {
namespace {

// Made by us, so that nobody else can read which pictures there are.
bool isFileOrMade(const std::filesystem::path& file)
{
    struct stat status = {};
    if (::stat(file.c_str(), &status) == 0) return S_ISREG(status.st_mode);
    const FileDescriptor made(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    return true;
}

void makeRoom(const std::filesystem::path& file, FoundDatabase found,
              const HistoryDatabase::Complain& complain)
{
    const bool isNewer = found == FoundDatabase::newer;
    const std::filesystem::path name = setAside(file, isNewer ? "newer" : "damaged");
    if (name.empty()) throw SqliteError(0, "what stands at " + file.native() + " cannot be moved away");
    complain(std::string(isNewer ? "the history is that of a newer version" : "the history is damaged") +
             "; it is kept as " + name.native() + " and a new one begins");
}

FoundDatabase found(Sqlite& database, HistoryDatabase::Trust trust)
try {
    const FoundDatabase head = prepareDatabase(database);
    if (head != FoundDatabase::ours || trust == HistoryDatabase::Trust::full) return head;
    Statement check = database.statement("PRAGMA quick_check(1)");
    return check.step() && check.bytes(0) == "ok" ? head : FoundDatabase::damaged;
} catch (const SqliteError& error) {
    if (error.isDamage()) return FoundDatabase::damaged;
    throw;
}

Sqlite opened(const std::filesystem::path& file, const HistoryDatabase::Complain& complain,
              HistoryDatabase::Trust trust)
{
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    const FileDescriptor lock = lockHistory(file);
    if (!isFileOrMade(file)) makeRoom(file, FoundDatabase::damaged, complain);
    {
        Sqlite database(file);
        const FoundDatabase what = found(database, trust);
        if (what == FoundDatabase::ours) return database;
        makeRoom(file, what, complain);
    }
    isFileOrMade(file);
    Sqlite database(file);
    prepareDatabase(database);
    return database;
}

void bindState(Statement& statement, int parameter, const std::optional<FileState>& state)
{
    if (!state) {
        statement.bindNull(parameter).bindNull(parameter + 1);
        return;
    }
    statement.bind(parameter, state->size).bind(parameter + 1, state->modified);
}

void bindPath(Statement& statement, int parameter, const std::optional<std::filesystem::path>& path)
{
    if (path)
        statement.bindBytes(parameter, path->native());
    else
        statement.bindNull(parameter);
}

std::optional<FileState> stateIn(const Statement& row, int column)
{
    if (row.isNull(column)) return std::nullopt;
    return FileState{row.integer(column), row.integer(column + 1)};
}

std::optional<std::filesystem::path> pathIn(const Statement& row, int column)
{
    if (row.isNull(column)) return std::nullopt;
    return row.bytes(column);
}

const char* condition(HistoryFilter filter)
{
    switch (filter) {
    case HistoryFilter::written:
        return "output IS NOT NULL";
    case HistoryFilter::notWritten:
        return "output IS NULL";
    case HistoryFilter::undone:
        return "undone <> 0";
    case HistoryFilter::all:
        break;
    }
    return "TRUE";
}

// The folders of the path do not count.
bool nameHolds(std::string_view path, std::string_view part)
{
    const std::string_view name = path.substr(path.rfind('/') + 1);
    return std::search(name.begin(), name.end(), part.begin(), part.end(), [](char left, char right) {
               return asciiLower(left) == asciiLower(right);
           }) != name.end();
}

constexpr std::string_view summaries =
    "SELECT b.id, b.time, b.origin, b.settings, count(*), count(f.output), sum(f.undone),"
    " sum(iif(f.output IS NULL, 0, f.original_bytes)), sum(f.output_bytes),"
    " sum(iif(f.output IS NULL OR f.undone, 0, f.original_bytes - f.output_bytes))"
    " FROM batches b JOIN files f ON f.batch = b.id";

std::vector<BatchSummary> summariesIn(Statement& rows)
{
    std::vector<BatchSummary> found;
    while (rows.step())
        found.push_back({.batch = {rows.integer(0), rows.integer(1), rows.bytes(2), rows.bytes(3)},
                         .files = rows.integer(4),
                         .written = rows.integer(5),
                         .undone = rows.integer(6),
                         .originalBytes = rows.integer(7),
                         .outputBytes = rows.integer(8),
                         .saved = rows.integer(9)});
    return found;
}

constexpr std::string_view files =
    "SELECT id, source, source_size, source_time, output, output_size, output_time, output_digest,"
    " original_bytes, output_bytes, original_trashed, trashed_original, replaced_size, replaced_time,"
    " trashed_replaced, success, message, undone FROM files";

FileRecord fileIn(const Statement& row)
{
    return {.id = row.integer(0),
            .source = row.bytes(1),
            .output = pathIn(row, 4),
            .originalBytes = row.integer(8),
            .outputBytes = row.integer(9),
            .isSuccess = row.integer(15) != 0,
            .message = row.bytes(16),
            .trace = {.source = stateIn(row, 2),
                      .output = stateIn(row, 5),
                      .outputDigest = row.bytes(7),
                      .isOriginalTrashed = row.integer(10) != 0,
                      .trashedOriginal = pathIn(row, 11),
                      .replaced = stateIn(row, 12),
                      .trashedReplaced = pathIn(row, 14)},
            .isUndone = row.integer(17) != 0};
}

std::vector<FileRecord> filesIn(Statement& rows)
{
    std::vector<FileRecord> found;
    while (rows.step())
        found.push_back(fileIn(rows));
    return found;
}

} // namespace

HistoryDatabase::HistoryDatabase(const std::filesystem::path& file, const Complain& complain, Trust trust)
    : m_database(opened(file, complain, trust))
{
}

std::int64_t HistoryDatabase::addBatch(const BatchRecord& batch)
{
    m_database.statement("INSERT INTO batches(time, origin, settings) VALUES(?, ?, ?)")
        .bind(1, batch.time)
        .bindText(2, batch.origin)
        .bindText(3, batch.settings)
        .run();
    return m_database.lastId();
}

// Understanding the words takes as long as adding the row, so the statement is used again. After a failure
// it is made anew.
Statement HistoryDatabase::rowToAdd()
{
    if (m_rowToAdd) return *std::exchange(m_rowToAdd, std::nullopt);
    return m_database.statement(
        "INSERT INTO files(batch, source, source_size, source_time, output, output_size, output_time, "
        "output_digest,"
        " original_bytes, output_bytes, original_trashed, trashed_original, replaced_size, replaced_time,"
        " trashed_replaced, success, message) VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
}

void HistoryDatabase::addFile(std::int64_t batch, const FileRecord& file)
{
    Statement row = rowToAdd();
    const FileTrace& trace = file.trace;
    row.bind(1, batch).bindBytes(2, file.source.native());
    bindState(row, 3, trace.source);
    bindPath(row, 5, file.output);
    bindState(row, 6, trace.output);
    row.bindBytes(8, trace.outputDigest).bind(9, file.originalBytes).bind(10, file.outputBytes);
    row.bind(11, trace.isOriginalTrashed ? 1 : 0);
    bindPath(row, 12, trace.trashedOriginal);
    bindState(row, 13, trace.replaced);
    bindPath(row, 15, trace.trashedReplaced);
    row.bind(16, file.isSuccess ? 1 : 0).bindText(17, file.message).run();
    m_rowToAdd = std::move(row);
    for (const auto& folder : trace.madeFolders)
        m_database.statement("INSERT INTO folders VALUES(?, ?)")
            .bind(1, batch)
            .bindBytes(2, folder.native())
            .run();
}

// Files are numbered one after the other, so that their number tells without counting how many there are:
// this runs in every transaction.
void HistoryDatabase::prune(std::int64_t now)
{
    constexpr std::int64_t day = 86'400;
    const HistoryLimits most = limits();
    m_database.statement("DELETE FROM files WHERE id <= (SELECT max(id) FROM files) - ?")
        .bind(1, most.files)
        .run();
    m_database.statement("DELETE FROM files WHERE batch IN (SELECT id FROM batches WHERE time < ?)")
        .bind(1, now - most.days * day)
        .run();
    m_database.run("DELETE FROM batches WHERE (SELECT min(batch) FROM files) IS NULL OR"
                   " id < (SELECT min(batch) FROM files)");
    m_database.run("DELETE FROM folders WHERE batch NOT IN (SELECT id FROM batches)");
}

std::vector<std::string> HistoryDatabase::digestsOf(const std::filesystem::path& output,
                                                    const std::filesystem::path& source, std::int64_t size)
{
    Statement query = m_database.statement(
        "SELECT output_digest FROM files WHERE output = ? AND source = ? AND output_size = ?"
        " AND output_digest <> x'' AND undone = 0");
    query.bindBytes(1, output.native()).bindBytes(2, source.native()).bind(3, size);
    std::vector<std::string> digests;
    while (query.step())
        digests.push_back(query.bytes(0));
    return digests;
}

bool HistoryDatabase::hasOutput(std::int64_t size)
{
    return m_database.statement("SELECT 1 FROM files WHERE output IS NOT NULL AND output_size = ? LIMIT 1")
        .bind(1, size)
        .step();
}

bool HistoryDatabase::hasOutput(std::int64_t size, const std::string& digest)
{
    return m_database
        .statement("SELECT 1 FROM files WHERE output IS NOT NULL AND output_size = ? AND output_digest = ?"
                   " AND original_bytes <> output_size LIMIT 1")
        .bind(1, size)
        .bindBytes(2, digest)
        .step();
}

std::vector<BatchSummary> HistoryDatabase::batches()
{
    Statement query = m_database.statement(std::string(summaries) + " GROUP BY b.id ORDER BY b.id DESC");
    return summariesIn(query);
}

std::vector<BatchSummary> HistoryDatabase::batch(std::int64_t id)
{
    Statement query = m_database.statement(std::string(summaries) + " WHERE b.id = ? GROUP BY b.id");
    query.bind(1, id);
    return summariesIn(query);
}

std::vector<BatchSummary> HistoryDatabase::lastToUndo()
{
    Statement query = m_database.statement(
        std::string(summaries) +
        " WHERE b.id = (SELECT batch FROM files WHERE output IS NOT NULL AND undone = 0 ORDER BY id DESC"
        " LIMIT 1) GROUP BY b.id");
    return summariesIn(query);
}

std::vector<FileRecord> HistoryDatabase::filesOf(std::int64_t batch)
{
    Statement query = m_database.statement(std::string(files) + " WHERE batch = ? ORDER BY id");
    query.bind(1, batch);
    return filesIn(query);
}

std::vector<FileRecord> HistoryDatabase::lastOf(const std::filesystem::path& source,
                                                const std::filesystem::path& output)
{
    Statement query = m_database.statement(std::string(files) +
                                           " WHERE output = ? AND source = ? ORDER BY id DESC LIMIT 1");
    query.bindBytes(1, output.native()).bindBytes(2, source.native());
    return filesIn(query);
}

// Names are compared here: to the database they are bytes, of which it knows no capitals.
std::vector<FoundFile> HistoryDatabase::find(const FileQuery& wanted)
{
    Statement query = m_database.statement(
        std::string("SELECT id, batch, output IS NOT NULL, undone, source, output FROM files WHERE ") +
        condition(wanted.filter) + (wanted.batch ? " AND batch = ? ORDER BY id" : " ORDER BY id DESC"));
    if (wanted.batch) query.bind(1, *wanted.batch);
    std::vector<FoundFile> found;
    while (query.step()) {
        const bool isMeant = wanted.name.empty() || nameHolds(query.bytes(4), wanted.name) ||
                             nameHolds(query.bytes(5), wanted.name);
        if (isMeant)
            found.push_back(
                {query.integer(0), query.integer(1), query.integer(2) != 0, query.integer(3) != 0});
    }
    return found;
}

std::vector<FileRecord> HistoryDatabase::filesNumbered(const std::vector<std::int64_t>& numbers)
{
    Statement query = m_database.statement(std::string(files) + " WHERE id = ?");
    std::vector<FileRecord> found;
    found.reserve(numbers.size());
    for (const std::int64_t number : numbers) {
        query.bind(1, number);
        if (query.step()) found.push_back(fileIn(query));
        query.run();
    }
    return found;
}

std::vector<std::filesystem::path> HistoryDatabase::foldersMadeWith(const std::vector<FileRecord>& files)
{
    std::set<std::int64_t> batches;
    Statement batchOf = m_database.statement("SELECT batch FROM files WHERE id = ?");
    for (const FileRecord& file : files) {
        batchOf.bind(1, file.id);
        if (batchOf.step()) batches.insert(batchOf.integer(0));
        batchOf.run();
    }
    std::set<std::filesystem::path> found;
    for (const std::int64_t batch : batches) {
        Statement made = m_database.statement("SELECT folder FROM folders WHERE batch = ?");
        made.bind(1, batch);
        while (made.step())
            found.insert(made.bytes(0));
    }
    return {found.begin(), found.end()};
}

void HistoryDatabase::markUndone(const std::vector<std::int64_t>& files)
{
    Transaction marking(m_database);
    Statement mark = m_database.statement("UPDATE files SET undone = 1 WHERE id = ?");
    for (const std::int64_t file : files)
        mark.bind(1, file).run();
    marking.commit();
}

HistoryLimits HistoryDatabase::limits()
{
    Statement query = m_database.statement("SELECT files, days FROM limits");
    if (!query.step()) return {};
    return {query.integer(0), query.integer(1)};
}

void HistoryDatabase::setLimits(const HistoryLimits& limits)
{
    Transaction change(m_database);
    m_database.run("DELETE FROM limits");
    m_database.statement("INSERT INTO limits VALUES(?, ?)").bind(1, limits.files).bind(2, limits.days).run();
    change.commit();
}

void HistoryDatabase::clear()
{
    m_database.run("DELETE FROM files; DELETE FROM batches; DELETE FROM folders; VACUUM; PRAGMA "
                   "wal_checkpoint(TRUNCATE)");
}

} // namespace lumora
