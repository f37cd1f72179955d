// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/sqlite.h"

#include <sqlite3.h>

namespace lumora {
namespace {

constexpr int waitMilliseconds = 5000;

} // namespace

bool SqliteError::isBusy() const
{
    return m_code == SQLITE_BUSY || m_code == SQLITE_LOCKED;
}

bool SqliteError::isDamage() const
{
    return m_code == SQLITE_CORRUPT || m_code == SQLITE_NOTADB;
}

Statement::Statement(sqlite3* database, std::string_view sql) : m_database(database)
{
    sqlite3_stmt* statement = nullptr;
    const int code =
        sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    m_statement.reset(statement);
    check(code);
}

void Statement::Finalize::operator()(sqlite3_stmt* statement) const
{
    sqlite3_finalize(statement);
}

void Statement::check(int code) const
{
    if (code != SQLITE_OK && code != SQLITE_ROW && code != SQLITE_DONE)
        throw SqliteError(code & 0xFF, sqlite3_errmsg(m_database));
}

Statement& Statement::bind(int parameter, std::int64_t number)
{
    check(sqlite3_bind_int64(m_statement.get(), parameter, number));
    return *this;
}

Statement& Statement::bindText(int parameter, std::string_view text)
{
    check(sqlite3_bind_text64(m_statement.get(), parameter, text.data(), text.size(), SQLITE_TRANSIENT,
                              SQLITE_UTF8));
    return *this;
}

Statement& Statement::bindBytes(int parameter, std::string_view bytes)
{
    check(sqlite3_bind_blob64(m_statement.get(), parameter, bytes.data(), bytes.size(), SQLITE_TRANSIENT));
    return *this;
}

Statement& Statement::bindNull(int parameter)
{
    check(sqlite3_bind_null(m_statement.get(), parameter));
    return *this;
}

bool Statement::step()
{
    const int code = sqlite3_step(m_statement.get());
    check(code);
    return code == SQLITE_ROW;
}

void Statement::run()
{
    while (step()) {
    }
    check(sqlite3_reset(m_statement.get()));
}

bool Statement::isNull(int column) const
{
    return sqlite3_column_type(m_statement.get(), column) == SQLITE_NULL;
}

std::int64_t Statement::integer(int column) const
{
    return sqlite3_column_int64(m_statement.get(), column);
}

std::string Statement::bytes(int column) const
{
    const void* const start = sqlite3_column_blob(m_statement.get(), column);
    const int size = sqlite3_column_bytes(m_statement.get(), column);
    return start ? std::string(static_cast<const char*>(start), static_cast<std::size_t>(size))
                 : std::string();
}

Sqlite::Sqlite(const std::filesystem::path& file)
{
    sqlite3* database = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX;
    const int code = sqlite3_open_v2(file.c_str(), &database, flags, nullptr);
    m_database.reset(database);
    if (code != SQLITE_OK) throw SqliteError(code & 0xFF, sqlite3_errstr(code));
    sqlite3_busy_timeout(database, waitMilliseconds);
    // The end of a program is not to wait for the disk; whoever comes next reads the log.
    sqlite3_db_config(database, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

void Sqlite::Close::operator()(sqlite3* database) const
{
    sqlite3_close_v2(database);
}

void Sqlite::run(const char* sql)
{
    const int code = sqlite3_exec(m_database.get(), sql, nullptr, nullptr, nullptr);
    if (code != SQLITE_OK) throw SqliteError(code & 0xFF, sqlite3_errmsg(m_database.get()));
}

std::int64_t Sqlite::number(std::string_view sql)
{
    Statement query = statement(sql);
    return query.step() ? query.integer(0) : 0;
}

std::int64_t Sqlite::lastId() const
{
    return sqlite3_last_insert_rowid(m_database.get());
}

Transaction::Transaction(Sqlite& database) : m_database(database)
{
    database.run("BEGIN IMMEDIATE");
}

Transaction::~Transaction()
{
    if (!m_isOpen) return;
    try {
        m_database.run("ROLLBACK");
    } catch (const SqliteError&) {
        // The failure that led here has rolled back already.
    }
}

void Transaction::commit()
{
    m_database.run("COMMIT");
    m_isOpen = false;
}

} // namespace lumora
