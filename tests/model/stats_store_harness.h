// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The totals of a folder of their own, with a clock that stands still, and results to record.
#pragma once

#include "model/stats_store.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora::test {

inline ProcessingResult success(std::int64_t before, std::int64_t after)
{
    return {"/in.jpg", "/out.webp", before, after, "Optimized", true};
}
inline ProcessingResult failure()
{
    return {"/in.jpg", std::nullopt, 0, 0, "The image could not be read.", false};
}

class StatsStoreTest : public ::testing::Test
{
protected:
    TemporaryDirectory m_directory;
    const std::filesystem::path m_file = m_directory / "Lumora/stats.json";
    LifetimeStats::Clock::time_point m_time{std::chrono::seconds(1'700'000'000)};

    std::unique_ptr<StatsStore> open()
    {
        return std::make_unique<StatsStore>(m_directory.path(), [this] { return m_time; });
    }
    LifetimeStats loaded(const std::string& json)
    {
        std::filesystem::create_directories(m_file.parent_path());
        writeFile(m_file, json);
        return open()->stats();
    }
};

inline const std::string sevenKeys =
    R"("filesProcessed":1,"filesSucceeded":1,"originalBytes":10,"outputBytes":4,)"
    R"("grossBytesSaved":6,"netBytesSaved":6,"largestSingleSaveBytes":6)";

} // namespace lumora::test
