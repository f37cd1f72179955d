// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heic_encoder.h"

#include "system/freed_memory.h"
#include "tests/platform/formats/written_pictures.h"
#include "tests/support/files.h"

#include <gmock/gmock.h>

#include <cmath>
#include <cstddef>
#include <random>
#include <set>

namespace lumora {
namespace {

class Heic : public test::WrittenPictures
{
protected:
    test::Pixels writtenPixels(const test::Pixels& pixels, double quality = 0.9)
    {
        return test::load(written(redrawn(pixels), "public.heic", quality));
    }
    // What the next ones to ask for memory find there.
    static void leaveBehind(int value)
    {
        std::vector<std::vector<char>> blocks;
        blocks.reserve(64);
        for (int i = 0; i < 64; ++i)
            blocks.emplace_back(1 << (10 + i % 12), static_cast<char>(value));
    }
    // Linear, summed over all pixels.
    static double lightOf(const test::Pixels& pixels)
    {
        double light = 0;
        for (int y = 0; y < pixels.height; ++y) {
            for (int x = 0; x < pixels.width; ++x) {
                const auto color = pixels.at(x, y);
                light += 0.2126 * std::pow(color[0] / 255.0, 2.2) + 0.7152 * std::pow(color[1] / 255.0, 2.2) +
                         0.0722 * std::pow(color[2] / 255.0, 2.2);
            }
        }
        return light;
    }
    static void expectClose(const std::vector<int>& found, const std::vector<int>& wanted)
    {
        ASSERT_EQ(found.size(), wanted.size());
        for (std::size_t i = 0; i < wanted.size(); ++i)
            EXPECT_NEAR(found[i], wanted[i], 8) << i;
    }
};

TEST_F(Heic, GivesThePictureClosely)
{
    const auto heic = writtenPixels(test::corneredPicture(64, 48));
    EXPECT_EQ(heic.width, 64);
    EXPECT_EQ(heic.height, 48);
    expectClose(heic.at(8, 8), test::corneredPicture(64, 48).at(8, 8));
    expectClose(heic.at(56, 40), test::corneredPicture(64, 48).at(56, 40));
}

TEST_F(Heic, KeepsTransparency)
{
    expectClose(writtenPixels(test::uniformPicture(16, 16, {200, 100, 40, 51})).at(8, 8), {200, 100, 40, 51});
    expectClose(writtenPixels(test::uniformPicture(16, 16, {90, 51})).at(8, 8), {90, 90, 90, 51});
}

TEST_F(Heic, GivesColoursAndTransparencyCloselyAtEveryQuality)
{
    for (const double quality : {0.5, 0.82, 0.89, 0.9, 0.95, 0.99, 1.0}) {
        SCOPED_TRACE(quality);
        expectClose(writtenPixels(test::uniformPicture(64, 64, {200, 100, 40, 51}), quality).at(30, 30),
                    {200, 100, 40, 51});
        expectClose(writtenPixels(test::corneredPicture(256, 192), quality).at(32, 32),
                    test::corneredPicture(256, 192).at(32, 32));
    }
}

TEST_F(Heic, HoldsEverySmallSize)
{
    for (int edge = 1; edge <= 18; ++edge) {
        for (const double quality : {0.82, 0.95}) {
            SCOPED_TRACE(edge);
            const auto heic =
                writtenPixels(test::uniformPicture(edge, 19 - edge, {200, 100, 40, 120}), quality);
            ASSERT_EQ(heic.width, edge);
            ASSERT_EQ(heic.height, 19 - edge);
            expectClose(heic.at(0, 0), {200, 100, 40, 120});
            expectClose(heic.at(edge - 1, 18 - edge), {200, 100, 40, 120});
        }
    }
}

// Stripes a pixel wide lose their colours where those are halved, but shall not look lighter from afar.
TEST_F(Heic, KeepsTheLightOfColouredEdges)
{
    test::Pixels stripes = test::uniformPicture(64, 64, {210, 60, 60});
    for (std::size_t i = 0; i + 6 <= stripes.bytes.size(); i += 6) {
        stripes.bytes[i] = 60;
        stripes.bytes[i + 1] = 60;
        stripes.bytes[i + 2] = 210;
    }
    EXPECT_NEAR(lightOf(writtenPixels(stripes, 0.89)), lightOf(stripes), 0.03 * lightOf(stripes));
}

TEST_F(Heic, IsTheSameWhateverMemoryHeldBefore)
{
    keepFreedMemory(); // as in a worker
    test::Pixels grain = test::uniformPicture(301, 203, {120, 120, 120});
    std::mt19937 random(7);
    for (std::uint8_t& value : grain.bytes)
        value = static_cast<std::uint8_t>(value + random() % 60);
    const Image image = redrawn(grain);
    std::set<std::string> files;
    for (const int left : {0, 85, 170, 255}) {
        leaveBehind(left);
        files.insert(test::readFile(written(image, "public.heic")));
    }
    EXPECT_EQ(files.size(), 1U);
}

TEST_F(Heic, WidensGray)
{
    expectClose(writtenPixels(test::uniformPicture(16, 16, {90})).at(8, 8), {90, 90, 90});
}

TEST_F(Heic, IsSmallerAtLowerQuality)
{
    const Image image = redrawn(test::corneredPicture(256, 256));
    EXPECT_LT(std::filesystem::file_size(written(image, "public.heic", 0.3)),
              std::filesystem::file_size(written(image, "public.heic", 0.85)));
}

TEST_F(Heic, HoldsMetadataAndProfile)
{
    const Image wide = asStored(test::corneredPicture(16, 16), {.profile = "p3"});
    const auto png = ImageSource::open(m_folder / "source.png");
    const auto heic = ImageSource::open(written(wide, "public.heic", 0.9, test::someMetadata()));
    ASSERT_TRUE(png && heic);
    test::expectSomeMetadata(heic->metadata(), false);
    EXPECT_FALSE(heic->metadata().profileName.empty());
    EXPECT_EQ(heic->metadata().profileName, png->metadata().profileName);
}

TEST(HevcEncoder, IsThere)
{
    EXPECT_TRUE(hasHevcEncoder());
}

} // namespace
} // namespace lumora
