// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/paths.h"

#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

struct PathCase
{
    std::string_view path;
    std::string_view standard;
};

void PrintTo(const PathCase& c, std::ostream* out)
{
    *out << c.path;
}

class Standardized : public testing::TestWithParam<PathCase>
{
};

TEST_P(Standardized, HasNoDetours)
{
    EXPECT_EQ(standardized(GetParam().path).native(), GetParam().standard);
    EXPECT_EQ(deduplicationKey(GetParam().path), GetParam().standard);
}

INSTANTIATE_TEST_SUITE_P(Paths, Standardized,
                         testing::Values(PathCase{"/a/b/../b/p.png", "/a/b/p.png"},
                                         PathCase{"/a/./p.png", "/a/p.png"},
                                         PathCase{"/a//b///p.png", "/a/b/p.png"}, PathCase{"/a/b/", "/a/b"},
                                         PathCase{"/a/b/.", "/a/b"}, PathCase{"/a/b/..", "/a"},
                                         PathCase{"/", "/"}, PathCase{"/..", "/"}, PathCase{"/../a", "/a"},
                                         PathCase{"/a/..", "/"}, PathCase{"/a/...", "/a/..."},
                                         PathCase{"/a/..b", "/a/..b"},
                                         PathCase{"/\xFF\xFE/../\xC3(.png", "/\xC3(.png"}));

TEST(StandardizedPath, IsAbsolute)
{
    EXPECT_EQ(standardized("p.png"), std::filesystem::current_path() / "p.png");
    EXPECT_EQ(standardized("./sub/../p.png"), std::filesystem::current_path() / "p.png");
}

TEST(StandardizedPath, KeepsLinks)
{
    const test::TemporaryDirectory folder;
    std::filesystem::create_directory(folder / "real");
    std::filesystem::create_directory_symlink("real", folder / "link");
    EXPECT_EQ(standardized(folder / "link" / "p.png"), folder / "link" / "p.png");
}

struct NameCase
{
    std::string_view path;
    std::string_view base;
    std::string_view extension;
};

void PrintTo(const NameCase& c, std::ostream* out)
{
    *out << c.path;
}

class Names : public testing::TestWithParam<NameCase>
{
};

TEST_P(Names, AreSplitAtTheLastDot)
{
    EXPECT_EQ(baseName(GetParam().path), GetParam().base);
    EXPECT_EQ(pathExtension(GetParam().path), GetParam().extension);
}

INSTANTIATE_TEST_SUITE_P(
    Paths, Names,
    testing::Values(NameCase{"/a/photo.jpg", "photo", "jpg"},
                    NameCase{"/a/holiday.2024.JPG", "holiday.2024", "JPG"},
                    NameCase{"/a.b/photo", "photo", ""}, NameCase{"/a/.hidden", ".hidden", ""},
                    NameCase{"/a/.hidden.png", ".hidden", "png"}, NameCase{"/a/photo.", "photo", ""},
                    NameCase{"/a/a..png", "a.", "png"}, NameCase{"/a/my photo.tar.gz", "my photo.tar", "gz"},
                    NameCase{"\xFF.\xFE", "\xFF", "\xFE"}, NameCase{"/a/-q.png", "-q", "png"}));

} // namespace
} // namespace lumora
