// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/history_schema.h"

namespace lumora {
namespace {

constexpr std::int64_t version = 1;

constexpr const char* tables = R"(
CREATE TABLE batches(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    time INTEGER NOT NULL,
    origin TEXT NOT NULL,
    settings TEXT NOT NULL);
CREATE TABLE files(
    id INTEGER PRIMARY KEY,
    batch INTEGER NOT NULL,
    source BLOB NOT NULL,
    source_size INTEGER,
    source_time INTEGER,
    output BLOB,
    output_size INTEGER,
    output_time INTEGER,
    output_digest BLOB,
    original_bytes INTEGER NOT NULL,
    output_bytes INTEGER NOT NULL,
    original_trashed INTEGER NOT NULL,
    trashed_original BLOB,
    replaced_size INTEGER,
    replaced_time INTEGER,
    trashed_replaced BLOB,
    success INTEGER NOT NULL,
    message TEXT NOT NULL,
    undone INTEGER NOT NULL DEFAULT 0);
CREATE INDEX files_of_batch ON files(batch);
CREATE INDEX files_by_output ON files(output) WHERE output IS NOT NULL;
CREATE INDEX files_by_content ON files(output_size, output_digest) WHERE output IS NOT NULL;
CREATE TABLE limits(files INTEGER NOT NULL, days INTEGER NOT NULL);
PRAGMA user_version = 1;
)";

// Those that a batch made for its outputs. Came later; older programs do not miss it.
constexpr const char* folders =
    "CREATE TABLE IF NOT EXISTS folders(batch INTEGER NOT NULL, folder BLOB NOT NULL)";

bool hasOurTables(Sqlite& database)
{
    return database.number(
               "SELECT count(*) FROM sqlite_master WHERE name IN ('batches', 'files', 'limits')") == 3;
}

} // namespace

// Every transaction is in the log when it ends, and the log is forced to the disk only when it is taken over:
// a killed program loses nothing of it.
FoundDatabase prepareDatabase(Sqlite& database)
{
    database.run("PRAGMA synchronous = NORMAL");
    const std::int64_t found = database.number("PRAGMA user_version");
    if (found > version) return FoundDatabase::newer;
    if (found == version) {
        if (!hasOurTables(database)) return FoundDatabase::damaged;
        database.run(folders);
        return FoundDatabase::ours;
    }
    database.run("PRAGMA journal_mode = WAL");
    Transaction making(database);
    if (database.number("PRAGMA user_version") == version) return FoundDatabase::ours;
    if (database.number("SELECT count(*) FROM sqlite_master") != 0) return FoundDatabase::damaged;
    database.run(tables);
    database.run(folders);
    making.commit();
    return FoundDatabase::ours;
}

} // namespace lumora
