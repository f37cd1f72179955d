// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "webp/ppm_writer.h"

#include "formats/image_source.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

    test::TemporaryDirectory m_folder;
};

TEST_F(PpmWriter, WritesHeaderAndPixelsOnly)
{
    ASSERT_TRUE(writePpm(imageOf({2, 1, 3, {1, 2, 3, 250, 251, 252}}), m_folder / "a.ppm"));
    EXPECT_EQ(test::readBytes(m_folder / "a.ppm"), std::string("P6\n2 1\n255\n\x01\x02\x03\xFA\xFB\xFC"));
}

TEST_F(PpmWriter, WritesTransparentPixelsBlackAndHalfTransparentOnesDarkened)
{
    ASSERT_TRUE(writePpm(imageOf({3, 1, 4, {200, 100, 50, 0, 200, 100, 50, 128, 200, 100, 50, 255}}),
                         m_folder / "a.ppm"));
    const std::string ppm = test::readBytes(m_folder / "a.ppm");
    std::vector<int> pixels;
    for (const char c : ppm.substr(11))
        pixels.push_back(static_cast<unsigned char>(c));
    EXPECT_THAT(pixels, ElementsAre(0, 0, 0, 100, 50, 25, 200, 100, 50));
}

TEST_F(PpmWriter, NamesTheFileThatItCannotWrite)
{
    const auto file = m_folder / "missing" / "a.ppm";
    const auto written = writePpm(imageOf(test::corneredPicture(2, 2)), file);
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().step, CwebpError::Step::writingPpm);
    EXPECT_EQ(written.error().file, file);
    EXPECT_THAT(written.error().reason, testing::HasSubstr("No such file or directory"));
}

TEST_F(PpmWriter, SaysThatItIsThePictureThatCannotBeDrawn)
{
    test::save(m_folder / "whole.jpg", test::corneredPicture(64, 64));
    const std::string whole = test::readBytes(m_folder / "whole.jpg");
    test::writeText(m_folder / "cut.jpg", whole.substr(0, whole.size() - 200));
    const auto source = ImageSource::open(m_folder / "cut.jpg");
    ASSERT_TRUE(source);
    const auto written = writePpm(source->image(), m_folder / "a.ppm");
    ASSERT_FALSE(written);
    EXPECT_EQ(written.error().step, CwebpError::Step::drawing);
    EXPECT_FALSE(std::filesystem::exists(m_folder / "a.ppm"));
}

} // namespace
} // namespace lumora
