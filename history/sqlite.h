// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The database library with its handles owned and its failures as exceptions. One thread at a time.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace lumora {

class SqliteError : public std::runtime_error
{
public:
    SqliteError(int code, const std::string& reason) : std::runtime_error(reason), m_code(code) {}

    // Another program holds the database for longer than is waited.
    bool isBusy() const;
    // What is in the file is no database, or no whole one.
    bool isDamage() const;

private:
    int m_code;
};

class Statement
{
public:
    Statement(sqlite3* database, std::string_view sql);

    // Parameters from 1 on. Text is what was meant for people, bytes are anything.
    Statement& bind(int parameter, std::int64_t number);
    Statement& bindText(int parameter, std::string_view text);
    Statement& bindBytes(int parameter, std::string_view bytes);
    Statement& bindNull(int parameter);

    // To the next row, if there is one.
    bool step();
    // To its end, after which it can be bound anew.
    void run();

    // Columns from 0 on, of the row.
    bool isNull(int column) const;
    std::int64_t integer(int column) const;
    std::string bytes(int column) const;

private:
    struct Finalize
    {
        void operator()(sqlite3_stmt* statement) const;
    };

    void check(int code) const;

    sqlite3* m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;
};

class Sqlite
{
public:
    // Opens or makes the file. Nothing is read yet.
    explicit Sqlite(const std::filesystem::path& file);

    Statement statement(std::string_view sql) { return {m_database.get(), sql}; }
    // Any number of statements without parameters and rows.
    void run(const char* sql);
    // The one number that a query comes to; 0 when it comes to none.
    std::int64_t number(std::string_view sql);
    std::int64_t lastId() const;

private:
    struct Close
    {
        void operator()(sqlite3* database) const;
    };

    std::unique_ptr<sqlite3, Close> m_database;
};

// All or nothing of what happens while it lives; nothing, unless it is committed.
class Transaction
{
public:
    explicit Transaction(Sqlite& database);
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void commit();

private:
    Sqlite& m_database;
    bool m_isOpen = true;
};

} // namespace lumora
