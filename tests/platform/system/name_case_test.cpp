// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/name_case.h"

#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(NameCase, CountsInAnOrdinaryFolderAndInOneThatIsToBeMadeThere)
{
    const test::TemporaryDirectory folder;
    EXPECT_FALSE(mayIgnoreCase(folder.path()));
    EXPECT_FALSE(mayIgnoreCase(folder / "later" / "deeper"));
    EXPECT_FALSE(mayIgnoreCase(""));
}

TEST(NameCase, FoldsLettersOfEveryAlphabetAndOtherBytesAsTheyAre)
{
    EXPECT_EQ(caseFolded("IMG_1.JPG"), caseFolded("img_1.jpg"));
    EXPECT_EQ(caseFolded("ÉTÉ.webp"), caseFolded("été.webp"));
    EXPECT_EQ(caseFolded("МОРЕ"), caseFolded("море"));
    EXPECT_EQ(caseFolded("e\u0301"), caseFolded("\u00C9"));
    EXPECT_NE(caseFolded("a.jpg"), caseFolded("b.jpg"));
    EXPECT_EQ(caseFolded("A\xFF"), "a\xFF");
    EXPECT_EQ(caseFolded(""), "");
}

} // namespace
} // namespace lumora
