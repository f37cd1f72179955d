// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/block_writer.h"

#include "png/deflate_codes.h"

#include <algorithm>

namespace lumora {
namespace {

// So many words are always described; of the others those up to the last that occurs.
constexpr std::size_t leastDistanceWords = 1;
constexpr std::size_t leastLengthWords = 4;
constexpr unsigned longestLengthWord = 7;

// How the lengths of words are told: as they are, or 16 for the last one again, 17 and 18 for none.
struct LengthSymbol
{
    std::uint8_t symbol;
    std::uint8_t more; // behind it
};

constexpr std::uint8_t again = 16;
constexpr std::uint8_t fewNone = 17;
constexpr std::uint8_t manyNone = 18;
constexpr std::size_t lengthSymbolCount = 19;

constexpr unsigned bitsBehind(std::uint8_t symbol)
{
    if (symbol < again) return 0;
    if (symbol == again) return 2;
    return symbol == fewNone ? 3 : 7;
}

void addRun(std::vector<LengthSymbol>& symbols, std::uint8_t length, std::size_t run)
{
    const auto repeat = [&](std::uint8_t symbol, std::size_t least, std::size_t most) {
        while (run >= least) {
            const std::size_t taken = std::min(run, most);
            symbols.push_back({symbol, static_cast<std::uint8_t>(taken - least)});
            run -= taken;
        }
    };
    if (length == 0) {
        repeat(manyNone, 11, 138);
        repeat(fewNone, 3, 10);
    } else {
        symbols.push_back({length, 0});
        --run;
        repeat(again, 3, 6);
    }
    symbols.insert(symbols.end(), run, {length, 0});
}

std::vector<LengthSymbol> lengthSymbols(std::span<const CodeWord> literals,
                                        std::span<const CodeWord> distances)
{
    std::vector<std::uint8_t> lengths;
    for (const auto words : {literals, distances}) {
        for (const CodeWord& word : words)
            lengths.push_back(word.length);
    }
    std::vector<LengthSymbol> symbols;
    for (auto at = lengths.begin(); at != lengths.end();) {
        const auto end = std::find_if(at, lengths.end(), [&](std::uint8_t length) { return length != *at; });
        addRun(symbols, *at, static_cast<std::size_t>(end - at));
        at = end;
    }
    return symbols;
}

// Without those at the end that do not occur.
std::span<const CodeWord> used(std::span<const CodeWord> words, std::size_t least)
{
    while (words.size() > least && words.back().length == 0)
        words = words.first(words.size() - 1);
    return words;
}

} // namespace

void BlockWriter::put(std::uint32_t bits, unsigned count)
{
    m_bits |= std::uint64_t{bits} << m_bitCount;
    m_bitCount += count;
    for (; m_bitCount >= 8; m_bitCount -= 8, m_bits >>= 8U)
        m_bytes.push_back(static_cast<std::uint8_t>(m_bits));
}

void BlockWriter::write(std::span<const Step> steps, const SymbolCounts& counts)
{
    std::array<CodeWord, literalSymbols + lengthSlots> literalWords;
    findCode(counts.literalsAndLengths, longestWord, literalWords);
    std::array<CodeWord, distanceSlots> distanceWords;
    findCode(counts.distances, longestWord, distanceWords);

    const auto literals = used(literalWords, literalSymbols);
    const auto distances = used(distanceWords, leastDistanceWords);
    const auto symbols = lengthSymbols(literals, distances);
    std::array<std::uint32_t, lengthSymbolCount> symbolCounts{};
    for (const LengthSymbol& symbol : symbols)
        ++symbolCounts[symbol.symbol];
    std::array<CodeWord, lengthSymbolCount> words;
    findCode(symbolCounts, longestLengthWord, words);
    std::array<CodeWord, lengthSymbolCount> ordered; // those first that mostly occur
    std::ranges::transform(std::array{16, 17, 18, 0, 8, 7, 9, 6, 10, 5, 11, 4, 12, 3, 13, 2, 14, 1, 15},
                           ordered.begin(),
                           [&](int symbol) { return words[static_cast<std::size_t>(symbol)]; });
    const auto described = used(ordered, leastLengthWords);

    constexpr std::uint32_t ownCodes = 2U << 1U;
    put(ownCodes, 3);
    put(static_cast<std::uint32_t>(literals.size() - literalSymbols), 5);
    put(static_cast<std::uint32_t>(distances.size() - leastDistanceWords), 5);
    put(static_cast<std::uint32_t>(described.size() - leastLengthWords), 4);
    for (const CodeWord& word : described)
        put(word.length, 3);
    for (const LengthSymbol& symbol : symbols) {
        put(words[symbol.symbol].bits, words[symbol.symbol].length);
        put(symbol.more, bitsBehind(symbol.symbol));
    }

    const auto putWord = [&](const CodeWord& word) { put(word.bits, word.length); };
    for (const Step step : steps) {
        if (step.length == 1) {
            putWord(literalWords[step.value]);
            continue;
        }
        const std::size_t length = slotOfLength[step.length];
        putWord(literalWords[literalSymbols + length]);
        put(static_cast<std::uint32_t>(step.length - firstLength[length]), extraLengthBits[length]);
        const std::size_t distance = slotOfDistance(step.value);
        putWord(distanceWords[distance]);
        put(static_cast<std::uint32_t>(step.value - firstDistance[distance]), extraDistanceBits[distance]);
    }
    putWord(literalWords[endOfBlock]);
}

std::vector<std::uint8_t> BlockWriter::end(bool isLast)
{
    put(isLast ? 1 : 0, 3);
    if (m_bitCount > 0) put(0, 8 - m_bitCount);
    put(0xFFFF0000U, 32); // no bytes, and how many again, with all bits inverted
    return std::move(m_bytes);
}

} // namespace lumora
