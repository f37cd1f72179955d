// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/file_pages.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace lumora {
namespace {

constexpr std::size_t mostPages = 16;

} // namespace

void FilePages::begin(std::vector<std::int64_t> files, bool keepsShown)
{
    m_files = std::move(files);
    if (!keepsShown) m_pages.clear();
    for (auto& [number, page] : m_pages)
        page.state = State::stale;
}

const FileRecord* FilePages::record(int row) const
{
    const auto page = m_pages.find(row / rowsOfAPage);
    if (page == m_pages.end()) return nullptr;
    const auto found = page->second.records.find(row);
    return found == page->second.records.end() ? nullptr : &found->second;
}

std::optional<int> FilePages::nextToRead(int firstRow, int lastRow)
{
    const int last = std::min(lastRow, static_cast<int>(m_files.size()) - 1) / rowsOfAPage;
    for (int number = firstRow / rowsOfAPage; number <= last && !m_files.empty(); ++number) {
        Page& page = m_pages[number];
        if (page.state == State::reading || page.state == State::read) continue;
        page.state = State::reading;
        forgetFarFrom(number);
        return number;
    }
    return std::nullopt;
}

void FilePages::forgetFarFrom(int page)
{
    while (m_pages.size() > mostPages) {
        const auto first = m_pages.begin();
        const auto last = std::prev(m_pages.end());
        m_pages.erase(std::abs(first->first - page) > std::abs(last->first - page) ? first : last);
    }
}

std::vector<std::int64_t> FilePages::filesOf(int page) const
{
    const auto first = static_cast<std::size_t>(page) * rowsOfAPage;
    const auto last = std::min(first + rowsOfAPage, m_files.size());
    return {m_files.begin() + static_cast<std::ptrdiff_t>(first),
            m_files.begin() + static_cast<std::ptrdiff_t>(last)};
}

void FilePages::take(int page, const std::vector<FileRecord>& records)
{
    const auto found = m_pages.find(page);
    if (found == m_pages.end()) return;
    found->second = Page{State::read, {}};
    int row = page * rowsOfAPage;
    auto record = records.begin();
    for (const std::int64_t file : filesOf(page)) {
        if (record != records.end() && record->id == file) found->second.records.emplace(row, *record++);
        ++row;
    }
}

} // namespace lumora
