// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_texts.h"

#include "tests/platform/formats/png/png_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<PngText> textsIn(const std::string& png)
{
    return readPngTexts(test::OpenFile(png).get());
}

std::vector<PngText> textsOf(const test::PngChunks& chunks)
{
    return textsIn(test::pngOf(chunks));
}

TEST(PngTexts, OfEveryKindAreReadInTheirOrder)
{
    EXPECT_THAT(textsOf({{"IHDR", "h"},
                         {"tEXt", "Title\0Gr\xF6\xDF"s + "e"},
                         {"zTXt", "Author\0\0"s + deflated("Zo\xEB")},
                         {"IDAT", "d"},
                         {"iTXt", "Comment\0\0\0de\0Kommentar\0Schnee \xE2\x98\x83"s},
                         {"iTXt", "Source\0\1\0\0\0"s + deflated("\xE2\x98\x83")},
                         {"IEND", ""}}),
                ElementsAre(PngText{"Title", "Gr\xC3\xB6\xC3\x9F"
                                             "e"},
                            PngText{"Author", "Zo\xC3\xAB"}, PngText{"Comment", "Schnee \xE2\x98\x83"},
                            PngText{"Source", "\xE2\x98\x83"}));
}

TEST(PngTexts, ThatAreDamagedAreLeftOutAlone)
{
    const std::string packed = deflated(std::string(500, 'x') + "y");
    EXPECT_THAT(textsOf({{"tEXt", "no end of the keyword"},
                         {"tEXt", "\0no keyword"s},
                         {"tEXt", std::string(80, 'k') + "\0a keyword too long"s},
                         {"zTXt", "Cut\0\0"s + packed.substr(0, packed.size() / 2)},
                         {"zTXt", "Empty\0"s},
                         {"iTXt", "NotUtf8\0\0\0\0\0\xFF\xFE"s},
                         {"iTXt", "Flags\0\0"s},
                         {"iTXt", "Language\0\0\0de"s},
                         {"tEXt", std::string(79, 'k') + "\0words"s}}),
                ElementsAre(PngText{std::string(79, 'k'), "words"}));
}

TEST(PngTexts, BehindTheEndAreNone)
{
    EXPECT_THAT(textsOf({{"IEND", ""}, {"tEXt", "Title\0words"s}}), IsEmpty());
    EXPECT_THAT(textsIn(""), IsEmpty());
    EXPECT_THAT(textsIn(std::string(test::pngSignature)), IsEmpty());
}

TEST(PngTexts, OfAFileThatIsCutOffAreThoseBefore)
{
    const std::string png = test::pngOf({{"tEXt", "First\0words"s}, {"tEXt", "Second\0more words"s}});
    for (std::size_t size = png.find("more"); size < png.size() - 4 - 1; ++size) {
        const auto texts = textsIn(png.substr(0, size));
        ASSERT_FALSE(texts.empty()) << size;
        EXPECT_EQ(texts[0], (PngText{"First", "words"})) << size;
    }
    EXPECT_THAT(textsIn(png.substr(0, png.find("more"))), ElementsAre(PngText{"First", "words"}));
}

// A few kilobytes can unfold to gigabytes.
TEST(PngTexts, AboveFourMebibytesAreLeftOut)
{
    constexpr std::size_t most = std::size_t{1} << 22U;
    const auto texts = textsOf({{"zTXt", "Most\0\0"s + deflated(std::string(most, 'x'))},
                                {"zTXt", "More\0\0"s + deflated(std::string(most + 1, 'x'))},
                                {"tEXt", "Plain\0"s + std::string(most, 'x')},
                                {"tEXt", "Last\0words"s}});
    std::vector<std::string> keywords;
    for (const PngText& text : texts)
        keywords.push_back(text.keyword);
    EXPECT_THAT(keywords, ElementsAre("Most", "Last"));
}

TEST(PngTexts, EndAtSixteenMebibytes)
{
    const std::string packed = "Words\0\0"s + deflated(std::string(4'000'000, 'x'));
    test::PngChunks chunks(40, {"zTXt", packed});
    EXPECT_EQ(textsOf(chunks).size(), 5U);
}

TEST(PngTexts, LeaveTheFilesPositionAlone)
{
    const test::OpenFile file(test::pngOf({{"tEXt", "Title\0words"s}}));
    lseek(file.get(), 3, SEEK_SET);
    EXPECT_EQ(readPngTexts(file.get()).size(), 1U);
    EXPECT_EQ(lseek(file.get(), 0, SEEK_CUR), 3);
}

} // namespace
} // namespace lumora
