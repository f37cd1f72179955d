// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/image_destination.h"

#include "tests/platform/formats/written_pictures.h"
#include "tests/support/file_size_limit.h"
#include "types/format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using Destination = test::WrittenPictures;

TEST_F(Destination, WritesTheTypesOfTheTableAndNoOthers)
{
    EXPECT_THAT(writableTypeIdentifiers(),
                testing::UnorderedElementsAre("public.jpeg", "public.png", "public.heic", "public.tiff",
                                              "com.compuserve.gif", "com.microsoft.bmp"));
    auto file = AtomicFile::create(m_folder / "a");
    ASSERT_TRUE(file);
    EXPECT_FALSE(ImageDestination::create(*file, "org.webmproject.webp"));
    EXPECT_FALSE(ImageDestination::create(*file, "public.avif"));
}

TEST_F(Destination, RefusesAnEdgeThatReadersOfTheTypeRefuse)
{
    const Image tall = redrawn(test::uniformPicture(1, 16385, {1, 2, 3}));
    auto file = AtomicFile::create(m_folder / "tall.heic");
    ASSERT_TRUE(file);
    auto destination = ImageDestination::create(*file, "public.heic");
    ASSERT_TRUE(destination);
    destination->addImage(tall, {});
    EXPECT_FALSE(destination->finalize());
}

TEST_F(Destination, ReplacesAnEarlierFile)
{
    test::writeText(m_folder / "out1", "an earlier file");
    const test::Pixels pixels = test::corneredPicture(16, 12);
    EXPECT_EQ(test::load(written(redrawn(pixels), "public.png")).bytes, pixels.bytes);
}

TEST_F(Destination, WritesNothingWithoutAPicture)
{
    auto file = AtomicFile::create(m_folder / "a.png");
    ASSERT_TRUE(file);
    auto destination = ImageDestination::create(*file, "public.png");
    ASSERT_TRUE(destination);
    EXPECT_FALSE(destination->finalize());
}

// 0.82 where nothing is said.
TEST_F(Destination, HasAQualityOfItsOwn)
{
    const Image image = redrawn(test::corneredPicture(64, 64));
    auto file = AtomicFile::create(m_folder / "a.jpg");
    ASSERT_TRUE(file);
    auto destination = ImageDestination::create(*file, "public.jpeg");
    ASSERT_TRUE(destination);
    destination->addImage(image, {});
    ASSERT_TRUE(destination->finalize() && file->commit());
    EXPECT_EQ(test::readBytes(m_folder / "a.jpg"), test::readBytes(written(image, "public.jpeg", 0.82)));
    EXPECT_NE(test::readBytes(m_folder / "a.jpg"), test::readBytes(written(image, "public.jpeg", 0.83)));
}

TEST_F(Destination, TellsThatTheDiskIsFull)
{
    const Image image = redrawn(test::corneredPicture(400, 300));
    auto file = AtomicFile::create(m_folder / "a.png");
    ASSERT_TRUE(file);
    auto destination = ImageDestination::create(*file, "public.png");
    ASSERT_TRUE(destination);
    destination->addImage(image, {});

    const Status status = [&] {
        const test::FileSizeLimit full(100);
        return destination->finalize();
    }();
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().reason, "File too large");
}

} // namespace
} // namespace lumora
