// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A history in a folder of its own, and what it complains of.
#pragma once

#include "history/history.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace lumora::test {

class HistoryTest : public testing::Test
{
protected:
    std::filesystem::path data() const { return m_folder / "data"; }
    std::filesystem::path file() const { return History::fileIn(data()); }

    std::unique_ptr<History> open()
    {
        return std::make_unique<History>(
            file(), [this](const std::string& complaint) { m_complaints.push_back(complaint); });
    }

    static FileRecord row(const std::filesystem::path& source)
    {
        return {.source = source, .message = "The image could not be read."};
    }

    // Writes one batch of so many rows and closes.
    void remember(int rows)
    {
        const auto history = open();
        const auto batch = history->begin("test", "webp");
        for (int number = 0; number < rows; ++number)
            history->add(batch, row("/in/" + std::to_string(number) + ".jpg"));
    }

    std::size_t rowsOfAll()
    {
        const auto history = open();
        std::size_t rows = 0;
        const auto batches = history->batches();
        for (const BatchSummary& summary : batches.value())
            rows += static_cast<std::size_t>(summary.files);
        return rows;
    }

    const TemporaryDirectory m_folder;
    std::vector<std::string> m_complaints;
};

} // namespace lumora::test
