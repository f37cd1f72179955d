// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heic_quality.h"

#include "tests/platform/formats/written_pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace lumora {
namespace {

// Shapes of every size, the larger the stronger, under a little grain: as photographs are.
test::Pixels photographLike(int width, int height)
{
    std::mt19937 random(7);
    const auto any = [&](double most) { return std::uniform_real_distribution(-most, most)(random); };
    std::vector<double> light(static_cast<std::size_t>(width * height) * 3, 120);
    for (int size = 128; size >= 2; size /= 2) {
        const int columns = width / size + 2;
        std::vector<double> corners(static_cast<std::size_t>(columns * (height / size + 2)) * 3);
        for (double& corner : corners)
            corner = any(9 * std::pow(size, 0.45));
        const auto corner = [&](int x, int y, int c) {
            return corners[(static_cast<std::size_t>(y) * static_cast<std::size_t>(columns) +
                            static_cast<std::size_t>(x)) *
                               3 +
                           static_cast<std::size_t>(c)];
        };
        for (int i = 0; i < width * height * 3; ++i) {
            const int x = i / 3 % width;
            const int y = i / 3 / width;
            const double right = x % size / static_cast<double>(size);
            const double down = y % size / static_cast<double>(size);
            const auto at = [&](int c) {
                return std::lerp(
                    std::lerp(corner(x / size, y / size, c), corner(x / size + 1, y / size, c), right),
                    std::lerp(corner(x / size, y / size + 1, c), corner(x / size + 1, y / size + 1, c),
                              right),
                    down);
            };
            light[static_cast<std::size_t>(i)] += 0.75 * at(0) + 0.25 * at(i % 3); // colours change less
        }
    }
    test::Pixels pixels{width, height, 3, {}};
    for (const double value : light)
        pixels.bytes.push_back(static_cast<std::uint8_t>(std::clamp(value + any(2), 0.0, 255.0)));
    return pixels;
}

double meanDifference(const test::Pixels& a, const test::Pixels& b)
{
    double sum = 0;
    for (std::size_t i = 0; i < a.bytes.size(); ++i)
        sum += std::abs(a.bytes[i] - b.bytes.at(i));
    return sum / static_cast<double>(a.bytes.size());
}

class HeicQuality : public test::WrittenPictures
{
protected:
    std::filesystem::path photograph(const std::string& type, double quality)
    {
        return written(m_photograph, type, quality);
    }
    const test::Pixels m_pixels = photographLike(320, 240);
    const Image m_photograph = redrawn(m_pixels);
};

TEST_F(HeicQuality, GivesSmallerFilesThanJpegAtTheSameNumber)
{
    for (const double quality : {0.5, 0.7, 0.82, 0.92}) {
        const auto heic = static_cast<double>(file_size(photograph("public.heic", quality)));
        const auto jpeg = static_cast<double>(file_size(photograph("public.jpeg", quality)));
        EXPECT_LT(heic / jpeg, 0.7) << quality;
    }
}

TEST_F(HeicQuality, IsNotBoughtWithTheLook)
{
    for (const double quality : {0.5, 0.7, 0.82, 0.92}) {
        const double heic = meanDifference(m_pixels, test::load(photograph("public.heic", quality)));
        const double jpeg = meanDifference(m_pixels, test::load(photograph("public.jpeg", quality)));
        EXPECT_LT(heic, 1.35 * jpeg) << quality;
    }
}

TEST_F(HeicQuality, MakesFilesGrow)
{
    std::uintmax_t smaller = 0;
    for (const double quality : {0.01, 0.2, 0.4, 0.6, 0.75, 0.85, 0.89, 0.9, 0.95, 0.98, 1.0}) {
        const auto size = file_size(photograph("public.heic", quality));
        EXPECT_GT(size, smaller) << quality;
        smaller = size;
    }
}

TEST_F(HeicQuality, ReachesNearlyEveryPixelAtItsEnd)
{
    EXPECT_LT(meanDifference(m_pixels, test::load(photograph("public.heic", 1.0))), 1);
}

TEST(HeicEncoderQuality, RisesWithOursToTheBest)
{
    for (int quality = 2; quality <= 100; ++quality)
        EXPECT_GE(encoderQualityOf(quality), encoderQualityOf(quality - 1)) << quality;
    EXPECT_GE(encoderQualityOf(1), 0);
    EXPECT_LT(encoderQualityOf(1), 20);
    EXPECT_EQ(encoderQualityOf(100), 100);
}

} // namespace
} // namespace lumora
