// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/instance/launch_request.h"

#include <gtest/gtest.h>

using namespace lumora;
using Kind = LaunchArguments::Kind;

namespace {

struct Case
{
    const char* behaviour;
    std::vector<std::string> arguments;
    std::vector<std::filesystem::path> files;
};

void PrintTo(const Case& c, std::ostream* out)
{
    *out << c.behaviour;
}

class LaunchArgumentFiles : public testing::TestWithParam<Case>
{
};

TEST_P(LaunchArgumentFiles, become)
{
    const LaunchArguments parsed = parseLaunchArguments(GetParam().arguments);
    EXPECT_EQ(parsed.kind, Kind::launch);
    EXPECT_EQ(parsed.request.files, GetParam().files);
}

INSTANTIATE_TEST_SUITE_P(
    Arguments, LaunchArgumentFiles,
    testing::Values(
        Case{"Nothing", {}, {}}, Case{"AnAbsolutePath", {"/a/b c.png"}, {"/a/b c.png"}},
        Case{"ARelativePathOfTheCurrentFolder", {"x.png"}, {std::filesystem::current_path() / "x.png"}},
        Case{"TheFileOfAUri", {"file:///a/b%20%23c.png"}, {"/a/b #c.png"}},
        Case{"TheBytesOfAUriThatIsNotUtf8", {"file:///a/%E9.png"}, {"/a/\xE9.png"}},
        Case{"TheBytesOfAPathThatIsNotUtf8", {"/a/\xE9.png"}, {"/a/\xE9.png"}},
        Case{"AFileNamedLikeAnOptionAfterTheDashes", {"--", "-v"}, {std::filesystem::current_path() / "-v"}},
        Case{"AFileWithAColonInItsName", {"/a/12:30.png"}, {"/a/12:30.png"}}),
    [](const auto& each) { return each.param.behaviour; });

TEST(LaunchArguments, AddressesThatAreNoFilesOfThisMachineAreNamedAndLeftOut)
{
    const LaunchArguments parsed =
        parseLaunchArguments({"https://example.org/a.png", "/b.png", "file://elsewhere/c"});
    EXPECT_EQ(parsed.request.files, std::vector<std::filesystem::path>{"/b.png"});
    EXPECT_EQ(parsed.ignored, (std::vector<std::string>{"https://example.org/a.png", "file://elsewhere/c"}));
}

TEST(LaunchArguments, AnUnknownOptionIsAComplaintThatNamesIt)
{
    const LaunchArguments parsed = parseLaunchArguments({"--quick", "/b.png"});
    EXPECT_EQ(parsed.kind, Kind::wrong);
    EXPECT_EQ(parsed.complaint, "unknown option '--quick'");
}

TEST(LaunchArguments, OptionsAskForThePreferencesTheHelpAndTheVersion)
{
    EXPECT_TRUE(parseLaunchArguments({"--preferences"}).request.preferences);
    EXPECT_EQ(parseLaunchArguments({"--help"}).kind, Kind::help);
    EXPECT_EQ(parseLaunchArguments({"--version"}).kind, Kind::version);
}

} // namespace
