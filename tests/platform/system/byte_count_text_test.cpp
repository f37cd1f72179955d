// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/byte_count_text.h"

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace lumora {
namespace {

struct Case
{
    std::int64_t bytes;
    std::string_view text;
};

void PrintTo(const Case& c, std::ostream* out)
{
    *out << c.text;
}

class ByteCountText : public testing::TestWithParam<Case>
{
};

TEST_P(ByteCountText, ReadsAs)
{
    EXPECT_EQ(byteCountText(GetParam().bytes, "."), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Sizes, ByteCountText,
    testing::Values(Case{0, "Zero KB"}, Case{1, "1 byte"}, Case{2, "2 bytes"}, Case{999, "999 bytes"},
                    Case{1'000, "1 KB"}, Case{1'499, "1 KB"}, Case{1'500, "2 KB"}, Case{532'000, "532 KB"},
                    Case{999'499, "999 KB"}, Case{999'500, "1 MB"}, Case{999'950, "1 MB"},
                    Case{1'000'000, "1 MB"}, Case{1'049'999, "1 MB"}, Case{1'050'000, "1.1 MB"},
                    Case{1'200'000, "1.2 MB"}, Case{2'000'000, "2 MB"}, Case{999'949'999, "999.9 MB"},
                    Case{999'950'000, "1 GB"}, Case{1'004'999'999, "1 GB"}, Case{1'005'000'000, "1.01 GB"},
                    Case{1'500'000'000, "1.5 GB"}, Case{3'450'000'000, "3.45 GB"},
                    Case{20'000'000'000, "20 GB"}, Case{999'994'999'999, "999.99 GB"},
                    Case{999'995'000'000, "1 TB"}, Case{7'010'000'000'000, "7.01 TB"},
                    Case{8'250'000'000'000'000, "8.25 PB"},
                    Case{std::numeric_limits<std::int64_t>::max(), "9.22 EB"}));

INSTANTIATE_TEST_SUITE_P(NegativeCountsAreAMinusBeforeTheAbsoluteText, ByteCountText,
                         testing::Values(Case{-1, "-1 byte"}, Case{-999'950, "-1 MB"},
                                         Case{-1'234'567, "-1.2 MB"},
                                         Case{std::numeric_limits<std::int64_t>::min(), "-9.22 EB"}));

TEST(ByteCountTextSeparator, IsTheGivenOne)
{
    EXPECT_EQ(byteCountText(1'200'000, ","), "1,2 MB");
    EXPECT_EQ(byteCountText(3'450'000'000, "\u066B"), "3\u066B45 GB");
    EXPECT_EQ(byteCountText(2'000'000, ","), "2 MB");
}

TEST(ByteCountTextSeparator, IsAPointInTheCLocale)
{
    std::setlocale(LC_NUMERIC, "C");
    EXPECT_EQ(byteCountText(1'200'000), "1.2 MB");
}

} // namespace
} // namespace lumora
