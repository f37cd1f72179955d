// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A large JPEG that is wanted much smaller may be decoded at a reduced size; nobody must see it.
#include "formats/image_source.h"
#include "pixels/drawing.h"
#include "pixels/row_reader.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cmath>

namespace lumora {
namespace {

class ReducedDecodingTest : public testing::TestWithParam<int>
{
protected:
    Result<Image> drawn(const std::string& name, std::int64_t width, std::int64_t height,
                        Orientation orientation = 1) const
    {
        const auto source = ImageSource::open(m_folder / name);
        if (!source) return source.error();
        return draw(source->image().withPendingOrientation(orientation),
                    {width, height, ColorSpace::deviceRGB});
    }

    test::TemporaryDirectory m_folder;
};

std::vector<std::uint8_t> pixelsOf(const Image& image)
{
    auto rows = RowReader::open(image);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(rows->width() * rows->height() * 4));
    EXPECT_TRUE(rows->read(0, rows->height(), bytes.data()));
    return bytes;
}

double decibels(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b)
{
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    return 10 * std::log10(255 * 255 * static_cast<double>(a.size()) / (sum + 1e-9));
}

// The same pixels in a PNG are always decoded whole. Odd sizes end within a reduced pixel.
TEST_P(ReducedDecodingTest, GivesThePictureOfTheFullOne)
{
    const test::Pixels picture = test::corneredPicture(1571, 1203);
    test::save(m_folder / "a.jpg", picture);
    test::save(m_folder / "a.png", picture);
    const std::int64_t width = 1571 / GetParam();
    const std::int64_t height = 1203 / GetParam();

    const auto reduced = drawn("a.jpg", width, height);
    const auto full = drawn("a.png", width, height);

    ASSERT_TRUE(reduced);
    EXPECT_EQ(reduced->width(), width);
    EXPECT_EQ(reduced->height(), height);
    EXPECT_GE(decibels(pixelsOf(*reduced), pixelsOf(*full)), 42);
}

INSTANTIATE_TEST_SUITE_P(Reductions, ReducedDecodingTest, testing::Values(3, 4, 5, 8, 9, 16, 19));

TEST_F(ReducedDecodingTest, TurnsThePictureUpright)
{
    const test::Pixels picture = test::corneredPicture(1571, 1203);
    test::save(m_folder / "a.jpg", picture);
    test::save(m_folder / "a.png", picture);

    const auto reduced = drawn("a.jpg", 150, 196, 6);
    const auto full = drawn("a.png", 150, 196, 6);

    ASSERT_TRUE(reduced);
    EXPECT_GE(decibels(pixelsOf(*reduced), pixelsOf(*full)), 42);
}

TEST_F(ReducedDecodingTest, NoticesMissingData)
{
    test::save(m_folder / "a.jpg", test::corneredPicture(1571, 1203));
    std::filesystem::resize_file(m_folder / "a.jpg", std::filesystem::file_size(m_folder / "a.jpg") * 9 / 10);

    EXPECT_FALSE(drawn("a.jpg", 100, 76));
}

} // namespace
} // namespace lumora
