// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflate_codes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

namespace lumora {
namespace {

constexpr std::size_t mostLengths = 16;

struct Symbol
{
    std::uint64_t count;
    std::size_t number;
};

// For each length from the longest to 1, whether each of the cheapest ways to fill a word of it is a symbol
// or a pair of the length before.
std::vector<std::vector<bool>> waysOf(const std::vector<Symbol>& symbols, unsigned longest)
{
    std::vector<std::vector<bool>> ways;
    std::vector<std::uint64_t> pairs;
    for (unsigned length = 0; length < longest; ++length) {
        std::vector<std::uint64_t> costs;
        std::vector<bool> areSymbols;
        auto symbol = symbols.begin();
        auto pair = pairs.begin();
        while (symbol != symbols.end() || pair != pairs.end()) {
            const bool isSymbol = pair == pairs.end() || (symbol != symbols.end() && symbol->count <= *pair);
            costs.push_back(isSymbol ? (symbol++)->count : *pair++);
            areSymbols.push_back(isSymbol);
        }
        ways.push_back(std::move(areSymbols));
        pairs.clear();
        for (std::size_t i = 0; i + 1 < costs.size(); i += 2)
            pairs.push_back(costs[i] + costs[i + 1]);
    }
    return ways;
}

std::uint16_t reversed(unsigned bits, unsigned length)
{
    unsigned result = 0;
    for (unsigned i = 0; i < length; ++i)
        result |= (bits >> i & 1U) << (length - 1 - i);
    return static_cast<std::uint16_t>(result);
}

// Words of a length follow one another in the order of their symbols.
void setWords(std::span<CodeWord> words)
{
    std::array<unsigned, mostLengths + 1> next{};
    for (const CodeWord& word : words)
        ++next[word.length];
    next[0] = 0;
    for (unsigned first = 0; unsigned& count : next) {
        const unsigned here = first;
        first = (first + count) << 1U;
        count = here;
    }
    for (CodeWord& word : words) {
        if (word.length > 0) word.bits = reversed(next[word.length]++, word.length);
    }
}

} // namespace

void findCode(std::span<const std::uint32_t> counts, unsigned longest, std::span<CodeWord> words)
{
    std::vector<Symbol> symbols;
    std::ranges::fill(words, CodeWord{0, 0});
    for (std::size_t number = 0; number < counts.size(); ++number) {
        if (counts[number] > 0) symbols.push_back({counts[number], number});
    }
    std::ranges::stable_sort(symbols, {}, &Symbol::count);
    const auto ways = waysOf(symbols, longest);
    std::size_t taken = symbols.size() < 2 ? symbols.size() : 2 * symbols.size() - 2;
    for (auto way = ways.rbegin(); way != ways.rend() && taken > 0; ++way) {
        const auto end = way->begin() + static_cast<std::ptrdiff_t>(taken);
        const auto takenSymbols = static_cast<std::size_t>(std::count(way->begin(), end, true));
        for (std::size_t i = 0; i < takenSymbols; ++i)
            ++words[symbols[i].number].length;
        taken = 2 * (taken - takenSymbols);
    }
    setWords(words);
}

} // namespace lumora
