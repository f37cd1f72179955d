// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/ppm_writer.h"

#include "formats/image_source.h"
#include "system/atomic_file.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

namespace lumora {
namespace {

using testing::ElementsAre;

class PpmWriter : public testing::Test
{
protected:
    Image imageOf(const test::Pixels& pixels)
    {
        test::save(m_folder / "source.png", pixels);
        const auto source = ImageSource::open(m_folder / "source.png");
        EXPECT_TRUE(source);
        return source->image();
    }

    Result<Done, PpmError> write(const Image& image)
    {
        auto file = AtomicFile::create(m_folder / "a.ppm");
        auto written = writePpm(image, *file);
        EXPECT_TRUE(file->commit());
        return written;
    }

    test::TemporaryDirectory m_folder;
};

TEST_F(PpmWriter, WritesHeaderAndPixelsOnly)
{
    ASSERT_TRUE(write(imageOf({2, 1, 3, {1, 2, 3, 250, 251, 252}})));
    EXPECT_EQ(test::readBytes(m_folder / "a.ppm"), std::string("P6\n2 1\n255\n\x01\x02\x03\xFA\xFB\xFC"));
}

TEST_F(PpmWriter, WritesTransparentPixelsBlackAndHalfTransparentOnesDarkened)
{
    ASSERT_TRUE(write(imageOf({3, 1, 4, {200, 100, 50, 0, 200, 100, 50, 128, 200, 100, 50, 255}})));
    const std::string ppm = test::readBytes(m_folder / "a.ppm");
    std::vector<int> pixels;
    for (const char c : ppm.substr(11))
        pixels.push_back(static_cast<unsigned char>(c));
    EXPECT_THAT(pixels, ElementsAre(0, 0, 0, 100, 50, 25, 200, 100, 50));
}

TEST_F(PpmWriter, TellsWhyItCannotWrite)
{
    test::writeText(m_folder / "a.ppm", "");
    OutputFile readOnly(FileDescriptor(::open((m_folder / "a.ppm").c_str(), O_RDONLY | O_CLOEXEC)), "a.ppm");
    const auto written = writePpm(imageOf(test::corneredPicture(2, 2)), readOnly);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().step, PpmError::Step::writing);
    EXPECT_EQ(written.error().error.reason, "Bad file descriptor");
}

TEST_F(PpmWriter, SaysThatItIsThePictureThatCannotBeDrawn)
{
    test::save(m_folder / "whole.jpg", test::corneredPicture(64, 64));
    const std::string whole = test::readBytes(m_folder / "whole.jpg");
    test::writeText(m_folder / "cut.jpg", whole.substr(0, whole.size() - 200));
    const auto source = ImageSource::open(m_folder / "cut.jpg");
    ASSERT_TRUE(source);
    const auto written = write(source->image());
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().step, PpmError::Step::drawing);
}

} // namespace
} // namespace lumora
