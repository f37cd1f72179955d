// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflate_codes.h"

#include <gtest/gtest.h>

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

namespace lumora {
namespace {

using Counts = std::vector<std::uint32_t>;

std::vector<CodeWord> codeOf(const Counts& counts, unsigned longest)
{
    std::vector<CodeWord> words(counts.size());
    findCode(counts, longest, words);
    return words;
}

std::uint64_t bitsOf(const Counts& counts, const std::vector<CodeWord>& words)
{
    std::uint64_t bits = 0;
    for (std::size_t i = 0; i < counts.size(); ++i)
        bits += std::uint64_t{counts[i]} * words[i].length;
    return bits;
}

// Of all lengths that words can have.
std::uint64_t fewestBits(const Counts& counts, unsigned longest, std::size_t symbol, unsigned room)
{
    if (symbol == counts.size()) return 0;
    std::uint64_t fewest = std::numeric_limits<std::uint32_t>::max();
    for (unsigned length = 1; length <= longest; ++length) {
        const unsigned taken = 1U << (longest - length);
        if (taken > room) continue;
        fewest = std::min(fewest, std::uint64_t{counts[symbol]} * length +
                                      fewestBits(counts, longest, symbol + 1, room - taken));
    }
    return fewest;
}

TEST(DeflateCodes, AreTheShortestOfTheirLength)
{
    for (const Counts& counts : {Counts{1, 1, 2, 4, 8, 16}, Counts{1, 1, 1, 1, 1, 1},
                                 Counts{100, 1, 1, 1, 90}, Counts{1, 2, 3, 5, 8, 13, 21}, Counts{5, 5}}) {
        for (const unsigned longest : {3U, 4U, 5U}) {
            const auto words = codeOf(counts, longest);
            for (const CodeWord& word : words)
                EXPECT_LE(word.length, longest);
            EXPECT_EQ(bitsOf(counts, words), fewestBits(counts, longest, 0, 1U << longest));
        }
    }
}

// Fibonacci's numbers make the longest words.
TEST(DeflateCodes, StayShortForCountsThatDifferMost)
{
    Counts counts{1, 1};
    while (counts.size() < 40)
        counts.push_back(counts[counts.size() - 1] + counts[counts.size() - 2]);
    counts.resize(286, 1);
    const auto words = codeOf(counts, 15);
    double filled = 0;
    for (const CodeWord& word : words) {
        EXPECT_LE(word.length, 15);
        EXPECT_GE(word.length, 1);
        filled += 1.0 / (1U << word.length);
    }
    EXPECT_EQ(filled, 1);
}

TEST(DeflateCodes, HaveNoWordThatBeginsAnother)
{
    const auto words = codeOf({3, 0, 9, 1, 1, 0, 20, 4}, 15);
    for (std::size_t i = 0; i < words.size(); ++i) {
        for (std::size_t k = 0; k < words.size(); ++k) {
            if (i == k || words[i].length == 0 || words[k].length < words[i].length) continue;
            const unsigned mask = (1U << words[i].length) - 1;
            EXPECT_NE(words[k].bits & mask, words[i].bits);
        }
    }
    EXPECT_EQ(words[1].length, 0);
}

TEST(DeflateCodes, GiveASymbolThatIsAloneOneBit)
{
    EXPECT_EQ(codeOf({0, 7, 0}, 15)[1].length, 1);
}

} // namespace
} // namespace lumora
