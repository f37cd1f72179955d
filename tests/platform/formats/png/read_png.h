// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A reader of PNG files by the letter of their specification, for tests; not interlaced ones.
#pragma once

#include <gtest/gtest.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace lumora::test {

// Red, green, blue and alpha of every pixel, from 0 to 65535.
using WideColors = std::vector<std::array<unsigned, 4>>;

class PngReader
{
public:
    explicit PngReader(const std::string& file) : m_file(file.begin(), file.end()) {}

    WideColors read()
    {
        std::vector<std::uint8_t> data;
        for (std::size_t at = 8; at < m_file.size();) {
            const std::size_t length = number(at);
            const std::string type(m_file.begin() + long(at) + 4, m_file.begin() + long(at) + 8);
            const std::vector<std::uint8_t> body(m_file.begin() + long(at) + 8,
                                                 m_file.begin() + long(at + length) + 8);
            EXPECT_EQ(crc32(0, m_file.data() + at + 4, uInt(length + 4)), number(at + 8 + length)) << type;
            if (type == "IHDR") readHeader(body);
            if (type == "PLTE") m_palette = body;
            if (type == "tRNS") m_alphas = body;
            if (type == "IDAT") data.insert(data.end(), body.begin(), body.end());
            at += length + 12;
        }
        m_rows.resize((m_rowBytes + 1) * m_height);
        auto size = uLongf(m_rows.size());
        EXPECT_EQ(uncompress(m_rows.data(), &size, data.data(), uLong(data.size())), Z_OK);
        EXPECT_EQ(size, m_rows.size());
        reconstruct();
        return colors();
    }

private:
    std::size_t number(std::size_t at) const
    {
        return std::size_t{m_file[at]} << 24U | std::size_t{m_file[at + 1]} << 16U |
               std::size_t{m_file[at + 2]} << 8U | m_file[at + 3];
    }

    void readHeader(const std::vector<std::uint8_t>& body)
    {
        m_width = number(16);
        m_height = number(20);
        m_depth = body[8];
        m_colorType = body[9];
        constexpr std::array<unsigned, 7> channels{1, 0, 3, 1, 2, 0, 4};
        m_channels = channels.at(m_colorType);
        m_rowBytes = (m_width * m_channels * m_depth + 7) / 8;
    }

    void reconstruct()
    {
        const std::size_t step = std::max<std::size_t>(1, m_channels * m_depth / 8);
        std::vector<std::uint8_t> above(m_rowBytes);
        for (std::size_t y = 0; y < m_height; ++y) {
            std::uint8_t* const row = m_rows.data() + y * (m_rowBytes + 1) + 1;
            for (std::size_t i = 0; i < m_rowBytes; ++i) {
                const int a = i >= step ? row[i - step] : 0;
                const int b = above[i];
                const int c = i >= step ? above[i - step] : 0;
                const int p = a + b - c;
                const int nearest = std::abs(p - a) <= std::abs(p - b) && std::abs(p - a) <= std::abs(p - c)
                                        ? a
                                    : std::abs(p - b) <= std::abs(p - c) ? b
                                                                         : c;
                const std::array predictions{0, a, b, (a + b) / 2, nearest};
                row[i] = static_cast<std::uint8_t>(row[i] + predictions.at(row[-1]));
            }
            above.assign(row, row + m_rowBytes);
        }
    }

    unsigned sample(std::size_t x, std::size_t y, unsigned channel) const
    {
        const std::uint8_t* const row = m_rows.data() + y * (m_rowBytes + 1) + 1;
        const std::size_t index = x * m_channels + channel;
        if (m_depth == 16) return unsigned{row[index * 2]} << 8U | row[index * 2 + 1];
        const std::size_t bit = index * m_depth;
        return (row[bit / 8] >> (8 - m_depth - bit % 8)) & ((1U << m_depth) - 1);
    }

    bool isTransparentColor(const std::array<unsigned, 4>& samples) const
    {
        if (m_alphas.empty()) return false;
        EXPECT_EQ(m_alphas.size(), m_channels * 2);
        for (unsigned channel = 0; channel < m_channels; ++channel) {
            const std::size_t at = std::size_t{channel} * 2;
            if (samples.at(channel) != (unsigned{m_alphas.at(at)} << 8U | m_alphas.at(at + 1))) return false;
        }
        return true;
    }

    WideColors colors() const
    {
        WideColors colors;
        const unsigned scale = 65535 / ((1U << m_depth) - 1);
        for (std::size_t y = 0; y < m_height; ++y) {
            for (std::size_t x = 0; x < m_width; ++x) {
                std::array<unsigned, 4> s{};
                for (unsigned channel = 0; channel < m_channels; ++channel)
                    s.at(channel) = sample(x, y, channel);
                if (m_colorType == 3) {
                    const std::size_t i = s[0];
                    const unsigned alpha = i < m_alphas.size() ? m_alphas[i] : 255U;
                    colors.push_back({m_palette.at(i * 3) * 257U, m_palette.at(i * 3 + 1) * 257U,
                                      m_palette.at(i * 3 + 2) * 257U, alpha * 257});
                } else {
                    const bool isGray = m_channels <= 2;
                    colors.push_back({s[0] * scale, s[isGray ? 0 : 1] * scale, s[isGray ? 0 : 2] * scale,
                                      m_channels % 2 == 0     ? s.at(m_channels - 1) * scale
                                      : isTransparentColor(s) ? 0
                                                              : 65535});
                }
            }
        }
        return colors;
    }

    std::vector<std::uint8_t> m_file;
    std::vector<std::uint8_t> m_palette;
    std::vector<std::uint8_t> m_alphas;
    std::vector<std::uint8_t> m_rows; // behind their filter bytes
    std::size_t m_width = 0;
    std::size_t m_height = 0;
    unsigned m_depth = 0;
    unsigned m_colorType = 0;
    unsigned m_channels = 0;
    std::size_t m_rowBytes = 0;
};

} // namespace lumora::test
