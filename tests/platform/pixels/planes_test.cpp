// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "planes.h"

#include <gtest/gtest.h>

#include <numeric>
#include <vector>

namespace lumora {
namespace {

class PlanesTest : public testing::TestWithParam<int>
{
protected:
    // A width that fills no vector, rows wider apart than they are long.
    static constexpr int width = 131;
    static constexpr int height = 5;

    PlanesTest() : m_rowLength(static_cast<std::size_t>(width * GetParam())), m_bytes(stride() * height)
    {
        std::iota(m_bytes.begin(), m_bytes.end(), std::uint8_t{0});
    }

    std::size_t stride() const { return m_rowLength + 7; }
    std::uint8_t component(int x, int y, int band) const
    {
        return m_bytes[static_cast<std::size_t>(y) * stride() +
                       static_cast<std::size_t>(x * GetParam() + band)];
    }
    std::vector<std::uint8_t> packedRow(int y) const
    {
        const auto first = m_bytes.begin() + static_cast<std::ptrdiff_t>(stride()) * y;
        return {first, first + static_cast<std::ptrdiff_t>(m_rowLength)};
    }
    Planes filled() const
    {
        Planes planes(width, height, GetParam(), 1);
        planes.deinterleave(m_bytes.data(), static_cast<std::ptrdiff_t>(stride()), height);
        return planes;
    }

    std::size_t m_rowLength;
    std::vector<std::uint8_t> m_bytes;
};

TEST_P(PlanesTest, HoldEachComponentByItself)
{
    const Planes planes = filled();
    for (int band = 0; band < GetParam(); ++band)
        for (int y = 0; y < height; ++y)
            for (int x = 0; x < width; ++x)
                ASSERT_EQ(planes.row(band, y)[x], component(x, y, band)) << band << ' ' << x << ' ' << y;
}

TEST_P(PlanesTest, GiveTheFirstRowsBackPacked)
{
    const int count = height - 1;
    constexpr std::uint8_t untouched = 0xA5;
    std::vector<std::uint8_t> packed(m_rowLength * count + 64, untouched);
    filled().interleave(count, packed.data());
    std::vector<std::uint8_t> expected;
    for (int y = 0; y < count; ++y) {
        const std::vector<std::uint8_t> row = packedRow(y);
        expected.insert(expected.end(), row.begin(), row.end());
    }
    expected.resize(packed.size(), untouched);
    EXPECT_EQ(packed, expected);
}

TEST_P(PlanesTest, MoveRowsToTheTop)
{
    Planes planes = filled();
    planes.moveToTop(2, 3);
    std::vector<std::uint8_t> row(m_rowLength);
    planes.interleave(1, row.data());
    EXPECT_EQ(row, packedRow(2));
    EXPECT_EQ(planes.row(GetParam() - 1, 2)[width - 1], component(width - 1, 4, GetParam() - 1));
}

TEST_P(PlanesTest, BeginEveryRowAtAnAlignedByte)
{
    const Planes planes(width, height, GetParam(), 2);
    EXPECT_GE(planes.stride(), 2 * width);
    for (int y = 0; y < height; ++y)
        EXPECT_EQ(reinterpret_cast<std::uintptr_t>(planes.row(GetParam() - 1, y)) % 64, 0U);
}

INSTANTIATE_TEST_SUITE_P(Bands, PlanesTest, testing::Values(1, 2, 3, 4));

} // namespace
} // namespace lumora
