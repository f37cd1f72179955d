// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The records of a long list of files, read a page at a time for the rows in sight and forgotten again far
// from them. Main thread.
#pragma once

#include "history/history_records.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <vector>

namespace lumora {

class FilePages
{
public:
    static constexpr int rowsOfAPage = 64;

    // Of the files with these numbers, in this order. With `keepsShown` what is shown stays until it is read
    // anew: the files are the same ones as before.
    void begin(std::vector<std::int64_t> files, bool keepsShown);

    // Null while it is not read, or forgotten in the history.
    const FileRecord* record(int row) const;

    // The first page around these rows that has to be read, if there is one; it counts as being read then.
    std::optional<int> nextToRead(int firstRow, int lastRow);
    std::vector<std::int64_t> filesOf(int page) const;
    void take(int page, const std::vector<FileRecord>& records);

private:
    enum class State { unread, stale, reading, read };
    struct Page
    {
        State state = State::unread;
        std::map<int, FileRecord> records; // by row
    };

    void forgetFarFrom(int page);

    std::vector<std::int64_t> m_files;
    std::map<int, Page> m_pages;
};

} // namespace lumora
