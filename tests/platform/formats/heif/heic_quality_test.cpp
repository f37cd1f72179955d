// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heic_quality.h"

#include "tests/platform/formats/photographs.h"
#include "tests/platform/formats/written_pictures.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace lumora {
namespace {

class HeicQuality : public test::WrittenPictures
{
protected:
    std::filesystem::path photograph(const std::string& type, double quality)
    {
        return written(m_photograph, type, quality);
    }
    const test::Pixels m_pixels = test::photographLike(320, 240);
    const Image m_photograph = redrawn(m_pixels);
};

TEST_F(HeicQuality, GivesSmallerFilesThanJpegAtTheSameNumber)
{
    for (const double quality : {0.5, 0.7, 0.82, 0.92}) {
        const auto heic = static_cast<double>(file_size(photograph("public.heic", quality)));
        const auto jpeg = static_cast<double>(test::libraryJpeg(m_pixels, quality).size());
        EXPECT_LT(heic / jpeg, 0.7) << quality;
    }
}

TEST_F(HeicQuality, IsNotBoughtWithTheLook)
{
    for (const double quality : {0.5, 0.7, 0.82, 0.92}) {
        const double heic = test::meanDifference(m_pixels, test::load(photograph("public.heic", quality)));
        const double jpeg = test::meanDifference(m_pixels, test::load(photograph("public.jpeg", quality)));
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
    EXPECT_LT(test::meanDifference(m_pixels, test::load(photograph("public.heic", 1.0))), 1);
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
