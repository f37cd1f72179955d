// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/interleaving.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace lumora {
namespace {

using Bytes = std::vector<std::uint8_t>;

// In memory of exactly so many bytes, so that a sanitizer sees what goes beyond the last pixel.
TEST(FourthComponent, ComesAndGoesUpToTheLastPixel)
{
    for (std::size_t pixels = 0; pixels < 6; ++pixels) {
        Bytes three(pixels * 3);
        Bytes four(pixels * 4, 255);
        for (std::size_t i = 0; i < pixels * 3; ++i)
            three[i] = four[i / 3 * 4 + i % 3] = static_cast<std::uint8_t>(10 * i + 1);
        Bytes added(pixels * 4);
        addFourth(three.data(), static_cast<std::ptrdiff_t>(pixels), added.data());
        EXPECT_EQ(added, four);
        Bytes dropped(pixels * 3);
        dropFourth(four.data(), static_cast<std::ptrdiff_t>(pixels), dropped.data());
        EXPECT_EQ(dropped, three);
    }
}

} // namespace
} // namespace lumora
