// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "webp_size.h"

#include "system/regular_file.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using Size = std::optional<std::pair<std::int64_t, std::int64_t>>;

class WebPSize : public testing::Test
{
protected:
    Size sizeOf(const std::string& bytes) const
    {
        test::writeText(m_folder / "a.webp", bytes);
        const auto file = openRegularFile(m_folder / "a.webp");
        EXPECT_TRUE(file);
        return webpSize(file->get());
    }
    std::string picture(const test::Pixels& pixels, const test::SaveOptions& options) const
    {
        test::save(m_folder / "made.webp", pixels, options);
        return test::readBytes(m_folder / "made.webp");
    }

    test::TemporaryDirectory m_folder;
};

TEST_F(WebPSize, IsFoundInEveryKindOfFirstChunk)
{
    const auto opaque = test::corneredPicture(301, 17);
    const auto clear = test::uniformPicture(301, 17, {200, 10, 10, 100});
    for (const bool lossy : {true, false}) {
        EXPECT_EQ(sizeOf(picture(opaque, {.lossy = lossy})), std::pair(std::int64_t{301}, std::int64_t{17}));
        EXPECT_EQ(sizeOf(picture(clear, {.lossy = lossy})), std::pair(std::int64_t{301}, std::int64_t{17}));
        EXPECT_EQ(sizeOf(picture(opaque, {.profile = "p3", .lossy = lossy})),
                  std::pair(std::int64_t{301}, std::int64_t{17}));
    }
}

TEST_F(WebPSize, IsAbsentForAnyLengthButThatOfTheHeader)
{
    const std::string whole = picture(test::corneredPicture(64, 48), {.lossy = true});
    for (std::size_t length = 0; length < whole.size(); length += 7)
        EXPECT_EQ(sizeOf(whole.substr(0, length)), std::nullopt) << length;
    EXPECT_EQ(sizeOf(whole + '\0'), std::nullopt);
}

TEST_F(WebPSize, IsAbsentForOtherFiles)
{
    const std::string whole = picture(test::corneredPicture(64, 48), {.lossy = true});
    for (const std::size_t letter : {0U, 8U, 12U}) {
        std::string other = whole;
        other[letter] = 'x';
        EXPECT_EQ(sizeOf(other), std::nullopt) << letter;
    }
    EXPECT_EQ(sizeOf("hi"), std::nullopt);
}

} // namespace
} // namespace lumora
