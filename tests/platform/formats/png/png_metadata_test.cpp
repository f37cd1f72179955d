// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_metadata.h"

#include "tests/platform/formats/png/png_file.h"
#include "tests/platform/formats/written_pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::StartsWith;

test::PngChunks chunksOf(const Metadata& metadata)
{
    Bytes png;
    appendPngMetadata(png, metadata, {64, 48, true, {}});
    return test::chunksIn(test::textOf(png));
}

TEST(PngMetadata, IsNothingWhereThereIsNothingToSay)
{
    EXPECT_THAT(chunksOf({}), IsEmpty());
}

TEST(PngMetadata, HasAChunkForEachKind)
{
    EXPECT_THAT(chunksOf(test::someMetadata()),
                ElementsAre(Pair("eXIf", StartsWith("II")),
                            Pair("iTXt", StartsWith("XML:com.adobe.xmp\0\0\0\0\0"s)),
                            Pair("zTXt", StartsWith("Raw profile type iptc\0\0"s))));
}

TEST(PngMetadata, GivesTheDensityInDotsAMetre)
{
    EXPECT_THAT(chunksOf({.pngDensity = {300, 150}}),
                ElementsAre(Pair("pHYs", "\0\0\x2E\x23\0\0\x17\x12\1"s)));
}

TEST(PngMetadata, WritesTextsPlainWhereTheyAreAscii)
{
    EXPECT_THAT(chunksOf({.pngTexts = {{"Title", "Harbour"}, {"Author", "Zo\xC3\xAB"}}}),
                ElementsAre(Pair("tEXt", "Title\0Harbour"s), Pair("iTXt", "Author\0\0\0\0\0Zo\xC3\xAB"s)));
}

// XMP and IPTC come from the record; their texts of the source would contradict it.
TEST(PngMetadata, LeavesOutTextsThatHaveChunksOfTheirOwn)
{
    EXPECT_THAT(chunksOf({.pngTexts = {{"XML:com.adobe.xmp", "<x:xmpmeta/>"},
                                       {"Raw profile type iptc", "00"},
                                       {"Raw profile type exif", "00"},
                                       {"Title", "T"}}}),
                ElementsAre(Pair("tEXt", "Title\0T"s)));
}

} // namespace
} // namespace lumora
