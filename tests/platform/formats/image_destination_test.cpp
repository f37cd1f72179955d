// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_destination.h"

#include "tests/platform/formats/written_pictures.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sys/resource.h>

#include <csignal>

namespace lumora {
namespace {

using Destination = test::WrittenPictures;

TEST_F(Destination, WritesTheTypesOfTheTableAndNoOthers)
{
    EXPECT_THAT(ImageDestination::writableTypeIdentifiers(),
                testing::UnorderedElementsAre("public.jpeg", "public.png", "public.heic", "public.tiff",
                                              "com.compuserve.gif", "com.microsoft.bmp"));
    EXPECT_FALSE(ImageDestination::create(m_folder / "a.webp", "org.webmproject.webp"));
    EXPECT_FALSE(ImageDestination::create(m_folder / "a.avif", "public.avif"));
    EXPECT_FALSE(ImageDestination::create(m_folder / "missing" / "a.png", "public.png"));
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

TEST_F(Destination, ReplacesAnEarlierFile)
{
    test::writeText(m_folder / "out1", "an earlier file");
    const test::Pixels pixels = test::corneredPicture(16, 12);
    EXPECT_EQ(test::load(written(redrawn(pixels), "public.png")).bytes, pixels.bytes);
}

TEST_F(Destination, WritesNothingWithoutAPicture)
{
    auto destination = ImageDestination::create(m_folder / "a.png", "public.png");
    ASSERT_TRUE(destination);
    EXPECT_FALSE(destination->finalize());
    EXPECT_FALSE(std::filesystem::exists(m_folder / "a.png"));
}

// 0.82 where nothing is said.
TEST_F(Destination, HasAQualityOfItsOwn)
{
    const Image image = redrawn(test::corneredPicture(64, 64));
    auto destination = ImageDestination::create(m_folder / "a.jpg", "public.jpeg");
    ASSERT_TRUE(destination);
    destination->addImage(image, {});
    auto whole = destination->finalize();
    ASSERT_TRUE(whole && whole->commit());
    EXPECT_EQ(test::readBytes(m_folder / "a.jpg"), test::readBytes(written(image, "public.jpeg", 0.82)));
    EXPECT_NE(test::readBytes(m_folder / "a.jpg"), test::readBytes(written(image, "public.jpeg", 0.83)));
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
