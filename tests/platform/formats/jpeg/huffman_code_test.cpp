// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/huffman_code.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <numeric>
#include <random>
#include <string>
#include <utility>

namespace lumora {
namespace {

std::string textOf(const HuffmanCode::Word& word)
{
    std::string text;
    for (int bit = word.length; bit-- > 0;)
        text += (word.bits >> bit & 1) != 0 ? '1' : '0';
    return text;
}

// Every symbol that occurs has a code that begins no other one and is not of ones only; the tables say so.
void expectSound(const HuffmanCode& code, const SymbolCounts& counts)
{
    std::vector<std::string> words;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
        EXPECT_EQ(code.words[symbol].length > 0, counts[symbol] > 0) << symbol;
        if (counts[symbol] > 0) words.push_back(textOf(code.words[symbol]));
    }
    for (const std::string& word : words) {
        EXPECT_LE(word.size(), 16U);
        EXPECT_NE(word.find('0'), std::string::npos) << word;
        EXPECT_EQ(std::ranges::count_if(words, [&](const std::string& w) { return w.starts_with(word); }), 1)
            << word;
    }
    EXPECT_EQ(code.symbols.size(), words.size());
    std::size_t next = 0;
    for (std::size_t length = 1; length <= 16; ++length) {
        for (int i = 0; i < code.countOfLength[length - 1]; ++i)
            EXPECT_EQ(code.words[code.symbols.at(next++)].length, length);
    }
    EXPECT_EQ(next, words.size());
}

std::uint64_t bitsFor(const HuffmanCode& code, const SymbolCounts& counts)
{
    std::uint64_t bits = 0;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol)
        bits += counts[symbol] * code.words[symbol].length;
    return bits;
}

SymbolCounts countsOf(std::initializer_list<std::pair<int, int>> counts)
{
    SymbolCounts all{};
    for (const auto& [symbol, count] : counts)
        all[static_cast<std::size_t>(symbol)] = static_cast<std::uint64_t>(count);
    return all;
}

TEST(HuffmanCode, GivesTheOnlySymbolOneBit)
{
    const SymbolCounts counts = countsOf({{0xF0, 12345}});
    const HuffmanCode code = shortestCode(counts);
    expectSound(code, counts);
    EXPECT_EQ(code.words[0xF0].length, 1);
}

TEST(HuffmanCode, IsEmptyWithoutSymbols)
{
    expectSound(shortestCode({}), {});
}

TEST(HuffmanCode, GivesOftenSeenSymbolsShortWords)
{
    const SymbolCounts counts = countsOf({{1, 50}, {2, 25}, {3, 13}, {200, 6}, {255, 6}});
    const HuffmanCode code = shortestCode(counts);
    expectSound(code, counts);
    EXPECT_EQ(code.words[1].length, 1);
    EXPECT_EQ(code.words[2].length, 2);
    EXPECT_EQ(code.words[3].length, 3);
    // Beside the word that no symbol may have.
    EXPECT_EQ(code.words[200].length + code.words[255].length, 9);
}

TEST(HuffmanCode, HasRoomForEverySymbol)
{
    SymbolCounts counts{};
    counts.fill(1000);
    const HuffmanCode code = shortestCode(counts);
    expectSound(code, counts);
    EXPECT_LE(bitsFor(code, counts), 1000U * (255 * 8 + 9 + 8));
}

// Each symbol twice as rare as the one before would take a bit more than that one.
TEST(HuffmanCode, KeepsTheWordsOfRareSymbolsWithinSixteenBits)
{
    SymbolCounts counts{};
    for (std::size_t i = 0; i < 40; ++i)
        counts[i] = std::uint64_t{1} << i;
    const HuffmanCode code = shortestCode(counts);
    expectSound(code, counts);
    EXPECT_EQ(code.words[39].length, 1);
    // Two bits for each on the mean without the bound; what the bound costs is lost in the rest.
    EXPECT_LE(bitsFor(code, counts), 201 * (std::reduce(counts.begin(), counts.end()) / 100));
}

TEST(HuffmanCode, IsSoundForAnyCounts)
{
    std::mt19937 random(3);
    for (int round = 0; round < 300; ++round) {
        SymbolCounts counts{};
        for (auto& count : counts) {
            if (random() % 3 == 0) count = std::uint64_t{1} << random() % 30;
        }
        expectSound(shortestCode(counts), counts);
    }
}

} // namespace
} // namespace lumora
