// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_destination.h"

#include "formats/image_source.h"
#include "pixels/drawing.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>

namespace lumora {
namespace {

class Destination : public testing::Test
{
protected:
    Image redrawn(const test::Pixels& pixels)
    {
        test::save(m_folder / "source.png", pixels);
        const auto source = ImageSource::open(m_folder / "source.png");
        EXPECT_TRUE(source);
        auto image = draw(source->image(), {pixels.width, pixels.height, ColorSpace::deviceRGB});
        EXPECT_TRUE(image);
        return *image;
    }

    std::filesystem::path written(const Image& image, const std::string& type, double quality = 0.82)
    {
        const auto file = m_folder / ("out" + std::to_string(++m_count));
        auto destination = ImageDestination::create(file, type);
        EXPECT_TRUE(destination);
        destination->addImage(image, {{}, quality});
        auto whole = destination->finalize();
        EXPECT_TRUE(whole && whole->commit());
        return file;
    }

    test::TemporaryDirectory m_folder;
    int m_count = 0;
};

TEST_F(Destination, WritesTheTypesOfTheTableAndNoOthers)
{
    EXPECT_THAT(ImageDestination::writableTypeIdentifiers(),
                testing::UnorderedElementsAre("public.jpeg", "public.png", "public.heic", "public.tiff",
                                              "com.compuserve.gif", "com.microsoft.bmp"));
    EXPECT_FALSE(ImageDestination::create(m_folder / "a.webp", "org.webmproject.webp"));
    EXPECT_FALSE(ImageDestination::create(m_folder / "a.avif", "public.avif"));
    EXPECT_FALSE(ImageDestination::create(m_folder / "missing" / "a.png", "public.png"));
}

TEST_F(Destination, StoresAPngInItsSmallestExactForm)
{
    struct Case
    {
        const char* name;
        test::Pixels pixels;
        int bands; // as a reader sees them
    };
    test::Pixels manyGrays{256, 2, 1, {}};
    for (int i = 0; i < 512; ++i)
        manyGrays.bytes.push_back(static_cast<std::uint8_t>(i % 256));
    test::Pixels halfClear = test::uniformPicture(20, 20, {10, 200, 30, 255});
    halfClear.bytes[3] = 0;
    halfClear.bytes[0] = halfClear.bytes[1] = halfClear.bytes[2] = 0;
    for (const Case& c : {Case{"photograph", test::corneredPicture(90, 60), 3}, Case{"grays", manyGrays, 1},
                          Case{"few colours with alpha", halfClear, 4},
                          Case{"two colours", test::uniformPicture(9, 7, {250, 1, 2}), 3}}) {
        const auto file = written(redrawn(c.pixels), "public.png");
        const test::Pixels back = test::load(file);
        EXPECT_EQ(back.bands, c.bands) << c.name;
        EXPECT_EQ(back.bytes, c.pixels.bytes) << c.name;
    }
    EXPECT_LT(
        std::filesystem::file_size(written(redrawn(test::uniformPicture(200, 200, {9, 8, 7})), "public.png")),
        150U);
}

TEST_F(Destination, KeepsHalfTransparencyExactlyInPng)
{
    const auto back =
        test::load(written(redrawn(test::uniformPicture(8, 8, {255, 0, 255, 51})), "public.png"));
    EXPECT_THAT(back.at(1, 1), testing::ElementsAre(255, 0, 255, 51));
}

TEST_F(Destination, StoresColourAtFullResolutionFromQualityNinetyOn)
{
    const Image image = redrawn(test::corneredPicture(64, 64));
    const auto samplingOf = [](const std::filesystem::path& jpeg) {
        const std::string bytes = test::readBytes(jpeg);
        const std::size_t frame = bytes.find("\xFF\xC2"); // progressive
        EXPECT_NE(frame, std::string::npos);
        return static_cast<int>(static_cast<unsigned char>(bytes.at(frame + 11)));
    };
    EXPECT_EQ(samplingOf(written(image, "public.jpeg", 0.89)), 0x22);
    EXPECT_EQ(samplingOf(written(image, "public.jpeg", 0.90)), 0x11);
}

TEST_F(Destination, MakesSmallerFilesAtLowerQuality)
{
    const Image image = redrawn(test::corneredPicture(256, 256));
    for (const char* type : {"public.jpeg", "public.heic"}) {
        EXPECT_LT(std::filesystem::file_size(written(image, type, 0.3)),
                  std::filesystem::file_size(written(image, type, 0.85)))
            << type;
    }
}

TEST_F(Destination, RoundTripsTiffAndBmpExactlyAndGifClosely)
{
    const test::Pixels pixels = test::corneredPicture(64, 48);
    EXPECT_EQ(test::load(written(redrawn(pixels), "public.tiff")).bytes, pixels.bytes);
    const auto bmp = ImageSource::open(written(redrawn(pixels), "com.microsoft.bmp"));
    ASSERT_TRUE(bmp);
    EXPECT_EQ(bmp->typeIdentifier(), "com.microsoft.bmp");
    EXPECT_EQ(test::load(written(decode(bmp->image()).value(), "public.tiff")).bytes, pixels.bytes);
    const auto gif = test::load(written(redrawn(pixels), "com.compuserve.gif"));
    EXPECT_NEAR(gif.at(4, 4)[0], 230, 20);
}

TEST_F(Destination, GivesAGifTheExactColoursWhereItCan)
{
    test::Pixels many{16, 16, 3, {}}; // as many colours as a palette has
    for (int i = 0; i < 256; ++i) {
        for (const int component : {i, 255 - i, i * 7 % 256})
            many.bytes.push_back(static_cast<std::uint8_t>(component));
    }
    EXPECT_EQ(test::load(written(redrawn(many), "com.compuserve.gif")).bytes, many.bytes);

    test::Pixels holed = test::uniformPicture(2, 1, {200, 40, 40, 255});
    holed.bytes[7] = 0;
    const auto gif = test::load(written(redrawn(holed), "com.compuserve.gif"));
    EXPECT_THAT(gif.at(0, 0), testing::ElementsAre(200, 40, 40, 255));
    EXPECT_EQ(gif.at(1, 0)[3], 0);
}

TEST_F(Destination, EmbedsAProfileInABmpAndConvertsForAGifThatCannotHoldOne)
{
    test::save(m_folder / "wide.png", test::uniformPicture(8, 8, {230, 60, 40}), {.profile = "p3"});
    const auto wide = ImageSource::open(m_folder / "wide.png");
    ASSERT_TRUE(wide);
    const auto image = decode(wide->image());
    ASSERT_TRUE(image);
    const auto inSrgb = draw(*image, {8, 8, ColorSpace::sRGB});
    ASSERT_TRUE(inSrgb);
    const auto expected = test::load(written(*inSrgb, "public.png")).at(4, 4);

    const auto bmp = ImageSource::open(written(*image, "com.microsoft.bmp"));
    ASSERT_TRUE(bmp);
    EXPECT_EQ(bmp->metadata().profileName, wide->metadata().profileName);
    const auto shown = draw(bmp->image(), {8, 8, ColorSpace::sRGB});
    ASSERT_TRUE(shown);
    EXPECT_EQ(test::load(written(*shown, "public.png")).at(4, 4), expected);
    EXPECT_EQ(test::load(written(*image, "com.compuserve.gif")).at(4, 4), expected);
}

TEST_F(Destination, ConvertsAGrayProfileThatABmpCannotHold)
{
    test::save(m_folder / "gray.png", test::uniformPicture(8, 8, {100}), {.grayProfile = true});
    const auto gray = ImageSource::open(m_folder / "gray.png");
    ASSERT_TRUE(gray);
    const auto image = decode(gray->image());
    ASSERT_TRUE(image);
    const auto inSrgb = draw(*image, {8, 8, ColorSpace::sRGB});
    ASSERT_TRUE(inSrgb);
    const int expected = test::load(written(*inSrgb, "public.png")).at(4, 4)[0];
    const auto bmp = ImageSource::open(written(*image, "com.microsoft.bmp"));
    ASSERT_TRUE(bmp);
    const auto shown = draw(bmp->image(), {8, 8, ColorSpace::deviceRGB});
    ASSERT_TRUE(shown);
    EXPECT_EQ(test::load(written(*shown, "public.png")).at(4, 4)[0], expected);
}

TEST_F(Destination, RefusesAnEdgeThatReadersOfTheTypeRefuse)
{
    const Image tall = redrawn(test::uniformPicture(1, 16385, {1, 2, 3}));
    auto destination = ImageDestination::create(m_folder / "tall.heic", "public.heic");
    ASSERT_TRUE(destination);
    destination->addImage(tall, {});
    EXPECT_FALSE(destination->finalize());
    EXPECT_FALSE(std::filesystem::exists(m_folder / "tall.heic"));
}

TEST_F(Destination, LeavesAnEarlierFileAndNoDraftWhenTheDiskIsFull)
{
    const Image image = redrawn(test::corneredPicture(400, 300));
    const auto folder = m_folder / "full";
    std::filesystem::create_directories(folder);
    test::writeText(folder / "a.png", "an earlier file");
    auto destination = ImageDestination::create(folder / "a.png", "public.png");
    ASSERT_TRUE(destination);
    destination->addImage(image, {});

    // A limit on the size of files fails the write as a full disk does.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit tiny{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &tiny);
    const bool isWritten = static_cast<bool>(destination->finalize());
    setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, oldHandler);

    EXPECT_FALSE(isWritten);
    {
        const ImageDestination discarded = std::move(*destination);
    }
    EXPECT_EQ(test::readBytes(folder / "a.png"), "an earlier file");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

} // namespace
} // namespace lumora
