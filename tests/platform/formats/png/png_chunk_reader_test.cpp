// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/png_chunk_reader.h"

#include "formats/image_source.h"
#include "tests/platform/formats/png/png_file.h"
#include "tests/support/sample_images.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

namespace lumora {
namespace {

const std::string smallPng =
    test::pngOf({{"IHDR", std::string(13, 'h')}, {"tEXt", "words"}, {"IDAT", "data"}, {"IEND", ""}});

TEST(PngChunkReader, WalksThroughTheFile)
{
    const test::OpenFile file(smallPng);
    std::vector<std::string> types;
    std::size_t at = firstPngChunk;
    for (auto chunk = pngChunkAt(file.get(), at); chunk; chunk = pngChunkAt(file.get(), at)) {
        types.push_back(chunk->type);
        if (chunk->type == "tEXt") {
            EXPECT_EQ(smallPng.substr(chunk->dataAt, chunk->length), "words");
        }
        at = chunk->end();
    }
    EXPECT_EQ(types, (std::vector<std::string>{"IHDR", "tEXt", "IDAT", "IEND"}));
    EXPECT_EQ(at, smallPng.size());
    EXPECT_EQ(lseek(file.get(), 0, SEEK_CUR), 0);
}

TEST(PngChunkReader, FindsNoChunkWhereTheFileEnds)
{
    const test::OpenFile file(smallPng);
    EXPECT_FALSE(pngChunkAt(file.get(), smallPng.size()));
    EXPECT_FALSE(pngChunkAt(file.get(), smallPng.size() - 7));
    EXPECT_FALSE(pngChunkAt(file.get(), std::size_t{1} << 40U));
    EXPECT_FALSE(pngChunkAt(-1, 0));
}

TEST(PngHead, IsSoundWhenItsChunksLieInTheFile)
{
    EXPECT_TRUE(hasSoundPngHead(test::OpenFile(smallPng).get()));
    const std::size_t dataEnd = smallPng.size() - 12;
    for (std::size_t size = 0; size < dataEnd; ++size)
        EXPECT_FALSE(hasSoundPngHead(test::OpenFile(smallPng.substr(0, size)).get())) << size;
    // What comes behind the picture is no part of the head.
    EXPECT_TRUE(hasSoundPngHead(test::OpenFile(smallPng.substr(0, dataEnd)).get()));
}

TEST(PngHead, IsDamagedWithoutAPictureOrWithALengthBeyondTheFile)
{
    EXPECT_FALSE(hasSoundPngHead(test::OpenFile(test::pngOf({{"IHDR", "h"}, {"IEND", ""}})).get()));
    for (const std::string& length : {std::string("\xFF\xFF\xFF\xFF"), std::string("\x7F\xFF\xFF\xFF")}) {
        std::string claiming = smallPng;
        claiming.replace(smallPng.find("tEXt") - 4, 4, length);
        EXPECT_FALSE(hasSoundPngHead(test::OpenFile(claiming).get()));
    }
}

long peakKilobytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

TEST(HostilePng, WhoseTextClaimsGigabytesIsRefusedWithoutThem)
{
    const test::TemporaryDirectory folder;
    test::save(folder / "a.png", test::uniformPicture(9, 9, {1, 2, 3}));
    std::string png = test::readBytes(folder / "a.png");
    png.insert(33, std::string("\x70\0\0\0iTXtTitle\0\0\0\0\0", 18)); // behind the header
    test::writeText(folder / "a.png", png);
    const long before = peakKilobytes();
    EXPECT_FALSE(ImageSource::open(folder / "a.png"));
    EXPECT_LT(peakKilobytes() - before, 500'000);
}

} // namespace
} // namespace lumora
