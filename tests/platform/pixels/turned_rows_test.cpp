// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "turned_rows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {
namespace {

using Bytes = std::vector<std::uint8_t>;

// Serves rows wider apart than they are long, in order.
class Rows
{
public:
    Rows(const Bytes& bytes, std::size_t rowBytes) : m_rowBytes(rowBytes)
    {
        for (std::size_t at = 0; at < bytes.size(); at += rowBytes) {
            m_bytes.insert(m_bytes.end(), bytes.begin() + static_cast<std::ptrdiff_t>(at),
                           bytes.begin() + static_cast<std::ptrdiff_t>(at + rowBytes));
            m_bytes.insert(m_bytes.end(), gap, 0xEE);
        }
    }
    Result<RowSpan> operator()(int first, int count)
    {
        if (first != m_next) return Error{"asked out of order"};
        if (first + count > m_soundRows) return Error{"damaged"};
        m_next += count;
        const auto stride = static_cast<std::ptrdiff_t>(m_rowBytes + gap);
        return RowSpan{m_bytes.data() + first * stride, stride};
    }
    void damageFrom(int row) { m_soundRows = row; }
    int rowsRead() const { return m_next; }

private:
    static constexpr std::size_t gap = 5;

    std::size_t m_rowBytes;
    Bytes m_bytes;
    int m_next = 0;
    int m_soundRows = 1 << 30;
};

struct Turned
{
    Orientation orientation;
    std::string_view letters; // row by row; 3 wide up to orientation 4, else 2
};

void PrintTo(const Turned& turned, std::ostream* out)
{
    *out << turned.orientation;
}

class TurnedUpright : public testing::TestWithParam<Turned>
{
};

TEST_P(TurnedUpright, IsThatOfTheExifNumber)
{
    constexpr std::string_view stored = "abcdef"; // two rows of three
    for (const std::size_t pixelBytes : {1U, 2U, 3U, 4U, 8U}) {
        Bytes bytes;
        for (const char letter : stored)
            for (std::size_t c = 0; c < pixelBytes; ++c)
                bytes.push_back(static_cast<std::uint8_t>(letter + static_cast<char>(c)));
        Rows rows(bytes, 3 * pixelBytes);
        const int height = GetParam().orientation >= 5 && GetParam().orientation <= 8 ? 3 : 2;
        Bytes upright(bytes.size());
        const auto maker = turnedRows({3, 2}, pixelBytes, GetParam().orientation);
        ASSERT_TRUE(maker->make(std::ref(rows), 0, height, upright.data()));
        std::string letters;
        for (std::size_t i = 0; i < stored.size(); ++i) {
            letters += static_cast<char>(upright[i * pixelBytes]);
            for (std::size_t c = 0; c < pixelBytes; ++c)
                EXPECT_EQ(upright[i * pixelBytes + c], upright[i * pixelBytes] + c);
        }
        EXPECT_EQ(letters, GetParam().letters) << pixelBytes;
    }
}

INSTANTIATE_TEST_SUITE_P(Orientations, TurnedUpright,
                         testing::Values(Turned{0, "abcdef"}, Turned{1, "abcdef"}, Turned{2, "cbafed"},
                                         Turned{3, "fedcba"}, Turned{4, "defabc"}, Turned{5, "adbecf"},
                                         Turned{6, "daebfc"}, Turned{7, "fcebda"}, Turned{8, "cfbead"},
                                         Turned{9, "abcdef"}));

// A column of pixels, each its own row number, one strip after the other.
class TallPicture : public testing::TestWithParam<Orientation>
{
};

TEST_P(TallPicture, ComesStripByStrip)
{
    constexpr int height = 150;
    Bytes bytes;
    for (int y = 0; y < height; ++y)
        bytes.push_back(static_cast<std::uint8_t>(y));
    Rows rows(bytes, 1);
    const auto maker = turnedRows({1, height}, 1, GetParam());
    Bytes upright(height);
    for (int top = 0; top < height; top += streamedRows) {
        const int count = std::min(streamedRows, height - top);
        ASSERT_TRUE(maker->make(std::ref(rows), top, count, upright.data() + top));
        const bool isHeld = GetParam() == 3;
        EXPECT_EQ(rows.rowsRead(), isHeld ? height : top + count);
    }
    if (GetParam() == 3) std::ranges::reverse(upright);
    EXPECT_EQ(upright, bytes);
}

TEST_P(TallPicture, FailsWhereItIsDamaged)
{
    Rows rows(Bytes(150), 1);
    rows.damageFrom(149);
    const auto maker = turnedRows({1, 150}, 1, GetParam());
    Bytes upright(150);
    Status status = Done{};
    for (int top = 0; top < 150 && status; top += streamedRows)
        status = maker->make(std::ref(rows), top, std::min(streamedRows, 150 - top), upright.data());
    ASSERT_FALSE(status);
    EXPECT_EQ(status.error().description, "damaged");
}

INSTANTIATE_TEST_SUITE_P(Orientations, TallPicture, testing::Values(1, 2, 3));

} // namespace
} // namespace lumora
