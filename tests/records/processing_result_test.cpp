// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "records/processing_result.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>

namespace lumora {
namespace {

TEST(ProcessingResult, KeepsWhatItWasGiven)
{
    const ProcessingResult result("/in/a.jpg", "/out/a.webp", 9'000'000'000, -1, "Saved 1 KB", true);
    EXPECT_EQ(result.sourceURL, "/in/a.jpg");
    EXPECT_EQ(result.outputURL, std::filesystem::path("/out/a.webp"));
    EXPECT_EQ(result.originalBytes, 9'000'000'000);
    EXPECT_EQ(result.outputBytes, -1);
    EXPECT_EQ(result.message, "Saved 1 KB");
    EXPECT_TRUE(result.isSuccess);
}

TEST(ProcessingResult, IsARowOfItsOwnEvenWithEqualArguments)
{
    const ProcessingResult one("/in/a.jpg", std::nullopt, 1, 0, "no", false);
    const ProcessingResult other("/in/a.jpg", std::nullopt, 1, 0, "no", false);
    EXPECT_NE(one.id, other.id);
}

TEST(ProcessingResult, KeepsItsIdentityWhenCopied)
{
    const ProcessingResult one("/in/a.jpg", std::nullopt, 1, 0, "no", false);
    const ProcessingResult copy = one; // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(one.id, copy.id);
}

TEST(Uuid, ReadsAsARandomOneInUpperCase)
{
    EXPECT_THAT(Uuid::random().toString(),
                testing::MatchesRegex("[0-9A-F]{8}-[0-9A-F]{4}-4[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}"));
}

TEST(Uuid, DoesNotRepeat)
{
    std::set<std::string> seen;
    for (int i = 0; i < 10'000; ++i)
        EXPECT_TRUE(seen.insert(Uuid::random().toString()).second);
}

} // namespace
} // namespace lumora
