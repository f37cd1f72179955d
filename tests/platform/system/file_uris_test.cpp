// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/file_uris.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <array>

namespace lumora {
namespace {

struct UriCase
{
    const char* name;
    std::string uri;
    std::optional<std::filesystem::path> path;
};

std::string machineName()
{
    std::array<char, 256> name{};
    gethostname(name.data(), name.size());
    return name.data();
}

void PrintTo(const UriCase& c, std::ostream* out)
{
    *out << c.name;
}

class PathFromFileUri : public testing::TestWithParam<UriCase>
{
};

TEST_P(PathFromFileUri, DecodesToTheBytesOfALocalPathOrToNothing)
{
    EXPECT_EQ(pathFromFileUri(GetParam().uri), GetParam().path);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, PathFromFileUri,
    testing::Values(UriCase{"Plain", "file:///home/a.png", "/home/a.png"},
                    UriCase{"Escapes", "file:///a%20b/%23%25%C3%A9.png", "/a b/#%\xC3\xA9.png"},
                    UriCase{"LowerCaseEscapes", "file:///%c3%a9", "/\xC3\xA9"},
                    UriCase{"BytesThatAreNotText", "file:///%FF%80.jpg", "/\xFF\x80.jpg"},
                    UriCase{"BareBytes", "file:///\xE9.jpg", "/\xE9.jpg"},
                    UriCase{"BareHashAndQuestionMark", "file:///a#b?c.png", "/a#b?c.png"},
                    UriCase{"BarePercent", "file:///100%.png", "/100%.png"},
                    UriCase{"PercentBeforeOneDigit", "file:///%4", "/%4"},
                    UriCase{"PercentBeforeNoDigits", "file:///%zz%2", "/%zz%2"},
                    UriCase{"Localhost", "file://localhost/a.png", "/a.png"},
                    UriCase{"LocalhostInCapitals", "FILE://LocalHost/a.png", "/a.png"},
                    UriCase{"OwnName", "file://" + machineName() + "/a", "/a"},
                    UriCase{"OneSlash", "file:/a.png", "/a.png"},
                    UriCase{"OtherHost", "file://elsewhere.invalid/a.png", std::nullopt},
                    UriCase{"HostWithoutPath", "file://localhost", std::nullopt},
                    UriCase{"Web", "https://example.invalid/a.png", std::nullopt},
                    UriCase{"Relative", "file:a.png", std::nullopt},
                    UriCase{"NameHoldingNul", "file:///a%00b", std::nullopt},
                    UriCase{"BarePath", "/a.png", std::nullopt}, UriCase{"Empty", "", std::nullopt}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(FileUri, GivesBackEveryByteOfAName)
{
    std::string name = "/";
    for (int byte = 1; byte < 256; ++byte)
        name += static_cast<char>(byte);
    EXPECT_EQ(pathFromFileUri(fileUri(name)), std::filesystem::path(name));
}

TEST(FileUri, EscapesWhatWouldEndTheUriOrTheLine)
{
    EXPECT_EQ(fileUri("/a b/#%\n\xFF.png"), "file:///a%20b/%23%25%0A%FF.png");
}

TEST(UriList, SkipsCommentsBlankLinesAndRemoteAddresses)
{
    const std::string list = "# from a browser\r\nfile:///a.png\r\n\r\nhttps://example.invalid/b.png\r\n"
                             "file://localhost/c%20d\r\n";
    EXPECT_EQ(pathsOfUriList(list), (std::vector<std::filesystem::path>{"/a.png", "/c d"}));
}

TEST(UriList, TakesBareLineFeedsAndATrailingNul)
{
    EXPECT_EQ(pathsOfUriList(std::string_view("file:///a\nfile:///b\n\0", 21)),
              (std::vector<std::filesystem::path>{"/a", "/b"}));
}

TEST(UriList, IsEmptyForNoBytes)
{
    EXPECT_TRUE(pathsOfUriList({}).empty());
}

} // namespace
} // namespace lumora
