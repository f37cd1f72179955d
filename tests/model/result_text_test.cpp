// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/result_text.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumora {
namespace {

ProcessingResult success(std::int64_t before, std::int64_t after)
{
    return {"/in/a.jpg", "/in/a.webp", before, after, "Converted", true};
}

struct MetricsCase
{
    std::int64_t before;
    std::int64_t after;
    const char* text;
};

void PrintTo(const MetricsCase& c, std::ostream* out)
{
    *out << c.text;
}

class MetricsText : public testing::TestWithParam<MetricsCase>
{
};

TEST_P(MetricsText, saysBothSizesAndTheDifference)
{
    const MetricsCase& c = GetParam();
    EXPECT_EQ(metricsText(success(c.before, c.after), QLocale::c()).toStdString(), c.text);
}

INSTANTIATE_TEST_SUITE_P(
    Cases, MetricsText,
    testing::Values(MetricsCase{2'000'000, 1'500'000, "2 MB -> 1.5 MB | saved 500 KB (25.0%)"},
                    MetricsCase{1000, 0, "1 KB -> Zero KB | saved 1 KB (100.0%)"},
                    MetricsCase{3000, 2999, "3 KB -> 3 KB | saved 1 byte (0.0%)"},
                    MetricsCase{5000, 5000, "5 KB -> 5 KB | no size change"},
                    MetricsCase{1000, 1500, "1 KB -> 2 KB | larger by 500 bytes (50.0%)"},
                    MetricsCase{0, 700, "Zero KB -> 700 bytes"}, MetricsCase{0, 0, "Zero KB -> Zero KB"}));

TEST(MetricsTextLocale, usesTheLocalesDecimalSeparatorInSizesAndShares)
{
    const QLocale german(QLocale::German, QLocale::Germany);
    EXPECT_EQ(metricsText(success(2'000'000, 1'500'000), german).toStdString(),
              "2 MB -> 1,5 MB | saved 500 KB (25,0%)");
}

ResultTotals totals(std::initializer_list<ProcessingResult> results)
{
    ResultTotals sum;
    for (const ProcessingResult& result : results)
        sum.add(result);
    return sum;
}

TEST(ResultTotals, failedFilesCountAsFilesOnly)
{
    const auto sum = totals({success(1000, 400), {"/in/b.jpg", std::nullopt, 5000, 0, "no", false}});
    EXPECT_EQ(sum.filesText(), QStringLiteral("1/2"));
    EXPECT_EQ(sum.differenceTitle(), QStringLiteral("Total Saved"));
    EXPECT_EQ(sum.differenceText(QLocale::c()), QStringLiteral("600 bytes"));
    EXPECT_EQ(sum.percentageText(QLocale::c()), QStringLiteral("60.0%"));
}

TEST(ResultTotals, onlyFailuresReduceByNothing)
{
    const auto sum = totals({{"/in/b.jpg", std::nullopt, 5000, 0, "no", false}});
    EXPECT_EQ(sum.filesText(), QStringLiteral("0/1"));
    EXPECT_EQ(sum.differenceText(QLocale::c()), QStringLiteral("Zero KB"));
    EXPECT_EQ(sum.percentageText(QLocale::c()), QStringLiteral("0%"));
}

TEST(ResultTotals, growthIsCalledLargerAndItsShareCarriesAPlus)
{
    const auto sum = totals({success(1000, 400), success(1000, 2000)});
    EXPECT_EQ(sum.differenceTitle(), QStringLiteral("Total Larger"));
    EXPECT_EQ(sum.differenceText(QLocale::c()), QStringLiteral("400 bytes"));
    EXPECT_EQ(sum.percentageText(QLocale::c()), QStringLiteral("+20.0%"));
}

TEST(ResultTotals, equalSumsAreSavedNothing)
{
    const auto sum = totals({success(1000, 1000)});
    EXPECT_EQ(sum.differenceTitle(), QStringLiteral("Total Saved"));
    EXPECT_EQ(sum.percentageText(QLocale::c()), QStringLiteral("0.0%"));
}

TEST(ResultTotalsDeathTest, sumsBeyond64BitsEndTheProgram)
{
    constexpr std::int64_t huge = std::numeric_limits<std::int64_t>::max();
    EXPECT_DEATH(totals({success(huge, 0), success(1, 0)}), "beyond 64 bits");
}

} // namespace
} // namespace lumora
