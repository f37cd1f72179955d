// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "gif/gif_comments.h"

#include "tests/support/files.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace lumora {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::byte> bytesOf(const std::string& text)
{
    const auto bytes = std::as_bytes(std::span(text));
    return {bytes.begin(), bytes.end()};
}

std::vector<std::string> commentsIn(const std::string& gif)
{
    return gifComments(bytesOf(gif));
}

const std::string header = "GIF89a\2\0\1\0\0\0\0"s;              // without a colour table
const std::string tableHeader = "GIF89a\2\0\1\0\x80\0\0abcdef"s; // with two colours
const std::string picture = ",\0\0\0\0\2\0\1\0\x80"
                            "abcdef\2\2\x4C\1\0"s; // with two of its own
const std::string control = "!\xF9\4\0\0\0\0\0"s;

std::string remark(const std::string& text)
{
    return "!\xFE"s + static_cast<char>(text.size()) + text + '\0';
}

TEST(GifComments, StandAnywhereBetweenTheBlocks)
{
    EXPECT_THAT(commentsIn(header + remark("first") + control + picture + remark("second") + ";"),
                ElementsAre("first", "second"));
    EXPECT_THAT(commentsIn(tableHeader + remark("first") + picture + ";" + remark("behind the end")),
                ElementsAre("first"));
    EXPECT_THAT(commentsIn(header + control + picture + ";"), IsEmpty());
}

TEST(GifComments, AreJoinedFromTheirPieces)
{
    EXPECT_THAT(commentsIn(header + "!\xFE\3abc\2de\0"s + ";"), ElementsAre("abcde"));
    EXPECT_THAT(commentsIn(header + "!\xFE\0"s + remark("x") + ";"), ElementsAre("x"));
}

TEST(GifComments, OfAFileThatIsCutOffAreThoseBefore)
{
    const std::string gif = header + remark("first") + picture + remark("second");
    for (std::size_t size = 0; size < gif.size(); ++size) {
        const auto comments = commentsIn(gif.substr(0, size));
        EXPECT_EQ(comments.size(), size >= header.size() + remark("first").size() ? 1U : 0U) << size;
    }
    EXPECT_THAT(commentsIn("no GIF at all"), IsEmpty());
}

TEST(AddedGifComments, ComeBackAndThePictureStays)
{
    const test::TemporaryDirectory folder;
    const test::Pixels pixels = test::uniformPicture(9, 7, {200, 40, 40});
    test::save(folder / "a.gif", pixels);
    const std::string gif = test::readBytes(folder / "a.gif");
    const auto before = test::load(folder / "a.gif").bytes;
    const std::vector<std::string> comments{"first", std::string(255, 'x'), std::string(256, 'y'),
                                            std::string(600, 'z'), "\xFF raw \x80"};
    const auto commented = withGifMetadata(bytesOf(gif), comments);
    EXPECT_EQ(gifComments(commented), comments);
    std::string text;
    std::ranges::transform(commented, std::back_inserter(text),
                           [](std::byte b) { return std::to_integer<char>(b); });
    test::writeText(folder / "a.gif", text);
    EXPECT_EQ(test::load(folder / "a.gif").bytes, before);
}

TEST(AddedGifComments, StandBeforeThePicture)
{
    for (const std::string& head : {header, tableHeader}) {
        std::string expected = head;
        expected += remark("first") + picture + ";";
        EXPECT_EQ(withGifMetadata(bytesOf(head + picture + ";"), {"first"}), bytesOf(expected));
    }
}

TEST(AddedGifComments, LeaveAFileAsItIsWhenThereAreNoneOrItIsNoSoundGif)
{
    EXPECT_EQ(withGifMetadata(bytesOf(header + picture), {}), bytesOf(header + picture));
    EXPECT_EQ(withGifMetadata(bytesOf("GIF89a"), {"first"}), bytesOf("GIF89a"));
    EXPECT_EQ(withGifMetadata({}, {"first"}), std::vector<std::byte>{});
}

TEST(GifProfile, IsThatOfItsApplicationBlockAndNothingElse)
{
    const std::string profile = "!\xFF\x0BICCRGBG1012\5first\6second\0"s;
    const std::string other = "!\xFF\x0BNETSCAPE2.0\3\1\0\0\0"s;
    EXPECT_EQ(gifProfile(bytesOf(header + other + profile + picture + ";")), "firstsecond");
    EXPECT_EQ(gifProfile(bytesOf(header + other + picture + ";")), "");
    EXPECT_EQ(gifProfile(bytesOf(header + profile.substr(0, profile.size() - 1))), "");
}

TEST(GifXmp, ComesBackAsItWasAndLeavesTheRestReadable)
{
    const std::string packet =
        "<x:xmpmeta xmlns:x='adobe:ns:meta/'>" + std::string(700, 'x') + "</x:xmpmeta>";
    const auto written = withGifMetadata(bytesOf(header + picture + ";"), {"remark"}, packet);
    EXPECT_EQ(gifXmp(written), packet);
    EXPECT_EQ(gifComments(written), std::vector<std::string>{"remark"});
    EXPECT_EQ(gifXmp(bytesOf(header + picture + ";")), "");
}

} // namespace
} // namespace lumora
