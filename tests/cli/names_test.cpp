// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/cli/cli_fixture.h"

namespace lumora::cli::test {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

class CliName : public CliTest, public testing::WithParamInterface<std::string>
{
};

TEST_P(CliName, worksLikeAnyOther)
{
    photograph(GetParam());
    const Outcome text = runInto({"--", GetParam()});
    EXPECT_EQ(text.status, 0);
    EXPECT_EQ(text.complaints, "");
    EXPECT_THAT(text.lines(), SizeIs(2)) << text.results;
    ASSERT_THAT(outputs(), SizeIs(1));
    EXPECT_LE(outputs()[0].size(), 255u);
    if (GetParam().size() < 250) {
        EXPECT_EQ(outputs()[0], GetParam().substr(0, GetParam().size() - 3) + "webp");
    }

    const Outcome json = runInto({"--json", "--", GetParam()});
    EXPECT_EQ(json.status, 0);
    EXPECT_THAT(json.objects(), SizeIs(1));
}

TEST_P(CliName, isFoundInAFolder)
{
    photograph(GetParam());
    EXPECT_EQ(runInto({in("")}).status, 0);
    EXPECT_THAT(outputs(), SizeIs(1));
}

INSTANTIATE_TEST_SUITE_P(Table, CliName,
                         testing::Values("two words.jpg", "two\nlines.jpg", "\n.jpg", "quote'd \"name\".jpg",
                                         "-q.jpg", "--json.jpg", "étoile 日本 😀.jpg", "caf\xe9\xff.jpg",
                                         "$(touch run).jpg", "a;b&c|d`e`.jpg", "brackets[page=1].jpg",
                                         "back\\slash.jpg", "%s%n.jpg", "@file.jpg", "a:b.jpg",
                                         std::string(251, 'x') + ".jpg"));

} // namespace
} // namespace lumora::cli::test
