// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The latest rows of a plane of floats, kept in a ring so that an encoder can look a few rows back and ahead
// of the one that it works on. One thread.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

namespace lumora {

class RowRing
{
public:
    // `capacity` rows are kept.
    RowRing(int width, int capacity)
        : m_width(width), m_capacity(capacity),
          m_samples(static_cast<std::size_t>(width + 2 * margin) * static_cast<std::size_t>(capacity))
    {
    }

    int width() const { return m_width; }

    // Of the `width` samples; one more on each side belongs to the row.
    float* row(int y) { return m_samples.data() + offset(y); }
    const float* row(int y) const { return m_samples.data() + offset(y); }

    // Repeats the last of `count` samples to the end of the row, and the outermost ones into the margins.
    void extend(int y, int count)
    {
        float* const samples = row(y);
        std::fill(samples + count, samples + m_width + 1, samples[count - 1]);
        samples[-1] = samples[0];
    }

    void copyRow(int from, int to)
    {
        std::copy_n(row(from) - margin, m_width + 2 * margin, row(to) - margin);
    }

private:
    static constexpr int margin = 4;

    std::size_t offset(int y) const
    {
        return static_cast<std::size_t>(y % m_capacity) * static_cast<std::size_t>(m_width + 2 * margin) +
               margin;
    }

    int m_width;
    int m_capacity;
    std::vector<float> m_samples;
};

} // namespace lumora
