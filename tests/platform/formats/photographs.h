// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures as cameras take them, and what JPEG makes of them where nobody takes trouble.
#pragma once

#include "tests/support/sample_images.h"

#include <gtest/gtest.h>
#include <vips/vips.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <random>
#include <string>

namespace lumora::test {

// Shapes of every size, the larger the stronger, under a little grain: as photographs are.
inline Pixels photographLike(int width, int height)
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
    Pixels pixels{width, height, 3, {}};
    for (const double value : light)
        pixels.bytes.push_back(static_cast<std::uint8_t>(std::clamp(value + any(2), 0.0, 255.0)));
    return pixels;
}

inline double meanDifference(const Pixels& a, const Pixels& b)
{
    double sum = 0;
    for (std::size_t i = 0; i < a.bytes.size(); ++i)
        sum += std::abs(a.bytes[i] - b.bytes.at(i));
    return sum / static_cast<double>(a.bytes.size());
}

// As the image library codes it, progressive, `quality` from 0 to 1.
inline std::string libraryJpeg(const Pixels& pixels, double quality)
{
    const std::unique_ptr<VipsImage, void (*)(VipsImage*)> image(
        vips_image_new_from_memory(pixels.bytes.data(), pixels.bytes.size(), pixels.width, pixels.height,
                                   pixels.bands, VIPS_FORMAT_UCHAR),
        [](VipsImage* held) { g_object_unref(held); });
    void* bytes = nullptr;
    std::size_t size = 0;
    const int number = static_cast<int>(std::lround(100 * quality));
    const auto subsampling = number < 90 ? VIPS_FOREIGN_SUBSAMPLE_ON : VIPS_FOREIGN_SUBSAMPLE_OFF;
    EXPECT_EQ(vips_jpegsave_buffer(image.get(), &bytes, &size, "Q", number, "optimize_coding", TRUE,
                                   "interlace", TRUE, "subsample_mode", subsampling, nullptr),
              0);
    std::string jpeg(static_cast<const char*>(bytes), size);
    g_free(bytes);
    return jpeg;
}

} // namespace lumora::test
