// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflate_blocks.h"

#include "png/deflate_codes.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace lumora {
namespace {

// Blocks are made of so many steps and more.
constexpr std::size_t leastSteps = 1024;

// Real codes of so few bytes are far from ideal ones, by which no match would ever pay: those of two take 1.5
// bits each while nothing is repeated.
constexpr std::ptrdiff_t fewBytes = 4;

constexpr double bitsOfDescription = 60;
constexpr double bitsOfDescribedSymbol = 3.5;

// Of symbols in an ideal code, which is described besides.
double codeBits(std::span<const std::uint32_t> counts)
{
    std::uint32_t total = 0;
    float sum = 0;
    double bits = 0;
    for (const std::uint32_t count : counts) {
        if (count == 0) continue;
        const auto frequency = static_cast<float>(count);
        total += count;
        sum += frequency * std::log2(frequency);
        bits += bitsOfDescribedSymbol;
    }
    return total == 0 ? 0 : bits + total * std::log2(static_cast<double>(total)) - double{sum};
}

double bitsOf(const SymbolCounts& counts)
{
    double bits = bitsOfDescription + codeBits(counts.literalsAndLengths) + codeBits(counts.distances);
    for (std::size_t slot = 0; slot < lengthSlots; ++slot)
        bits += 1.0 * extraLengthBits[slot] * counts.literalsAndLengths[literalSymbols + slot];
    for (std::size_t slot = 0; slot < distanceSlots; ++slot)
        bits += 1.0 * extraDistanceBits[slot] * counts.distances[slot];
    return bits;
}

DeflateBlock blockOf(std::span<const Step> steps, std::size_t end)
{
    DeflateBlock block{end, {}, 0};
    for (const Step step : steps) {
        if (step.length == 1) {
            ++block.counts.literalsAndLengths[step.value];
            continue;
        }
        ++block.counts.literalsAndLengths[literalSymbols + slotOfLength[step.length]];
        ++block.counts.distances[slotOfDistance(step.value)];
    }
    block.counts.literalsAndLengths[endOfBlock] = 1;
    block.bits = bitsOf(block.counts);
    return block;
}

DeflateBlock together(const DeflateBlock& first, const DeflateBlock& second)
{
    DeflateBlock both{second.end, first.counts, 0};
    for (std::size_t i = 0; i < both.counts.literalsAndLengths.size(); ++i)
        both.counts.literalsAndLengths[i] += second.counts.literalsAndLengths[i];
    for (std::size_t i = 0; i < both.counts.distances.size(); ++i)
        both.counts.distances[i] += second.counts.distances[i];
    both.counts.literalsAndLengths[endOfBlock] = 1;
    both.bits = bitsOf(both.counts);
    return both;
}

double saving(const std::vector<DeflateBlock>& blocks, std::size_t first)
{
    if (first + 1 >= blocks.size()) return -std::numeric_limits<double>::infinity();
    return blocks[first].bits + blocks[first + 1].bits - together(blocks[first], blocks[first + 1]).bits;
}

std::uint32_t costOf(double bits)
{
    constexpr double parts = bitCost >> lengthBits;
    return static_cast<std::uint32_t>(std::lround(std::clamp(bits, 1.0, double{longestWord}) * parts))
           << lengthBits;
}

// In a code; of symbols that do not occur, as if one had.
std::uint32_t costOf(std::uint32_t count, double total)
{
    return costOf(count > 0 ? std::log2(total / count) : std::log2(total + 1) + 1);
}

std::ptrdiff_t usedOf(std::span<const std::uint32_t> counts)
{
    return std::ranges::count_if(counts, [](std::uint32_t count) { return count > 0; });
}

// In a code as short as frequencies allow.
template <std::size_t size>
std::array<std::uint32_t, size> idealCosts(const std::array<std::uint32_t, size>& counts)
{
    double total = 0;
    for (const std::uint32_t count : counts)
        total += count;
    std::array<std::uint32_t, size> costs;
    std::ranges::transform(counts, costs.begin(), [=](std::uint32_t count) { return costOf(count, total); });
    return costs;
}

// The same by the code that would be written.
template <std::size_t size>
std::array<std::uint32_t, size> realCosts(const std::array<std::uint32_t, size>& counts)
{
    std::array<CodeWord, size> words{};
    findCode(counts, longestWord, words);
    std::array<std::uint32_t, size> costs = idealCosts(counts);
    for (std::size_t symbol = 0; symbol < size; ++symbol) {
        if (counts[symbol] > 0) costs[symbol] = costOf(static_cast<double>(words[symbol].length));
    }
    return costs;
}

void setMatchCosts(StepCosts& costs, std::span<const std::uint32_t, lengthSlots> lengths,
                   std::span<const std::uint32_t, distanceSlots> distances)
{
    costs.lengths.fill(0);
    for (std::size_t length = shortestMatch; length <= longestMatch; ++length) {
        const std::size_t slot = slotOfLength[length];
        costs.lengths[length] =
            lengths[slot] + extraLengthBits[slot] * bitCost + static_cast<std::uint32_t>(length);
    }
    for (std::size_t slot = 0; slot < distanceSlots; ++slot)
        costs.distances[slot] = distances[slot] + extraDistanceBits[slot] * bitCost;
}

} // namespace

// Joins what saves most by being together until nothing does any more.
std::vector<DeflateBlock> blocksOf(std::span<const Step> steps)
{
    std::vector<DeflateBlock> blocks;
    for (std::size_t begin = 0; begin < steps.size(); begin += leastSteps) {
        const std::size_t count = std::min(leastSteps, steps.size() - begin);
        blocks.push_back(blockOf(steps.subspan(begin, count), begin + count));
    }
    std::vector<double> savings;
    for (std::size_t i = 0; i < blocks.size(); ++i)
        savings.push_back(saving(blocks, i));
    while (!blocks.empty()) {
        const auto most = std::ranges::max_element(savings);
        if (*most <= 0) break;
        const auto first = static_cast<std::size_t>(most - savings.begin());
        blocks[first] = together(blocks[first], blocks[first + 1]);
        blocks.erase(blocks.begin() + static_cast<std::ptrdiff_t>(first) + 1);
        savings.erase(most + 1);
        savings[first] = saving(blocks, first);
        if (first > 0) savings[first - 1] = saving(blocks, first - 1);
    }
    return blocks;
}

StepCosts costsBy(const SymbolCounts& counts)
{
    const bool areFew = usedOf(std::span(counts.literalsAndLengths).first<endOfBlock>()) <= fewBytes;
    const auto symbols =
        areFew ? realCosts(counts.literalsAndLengths) : idealCosts(counts.literalsAndLengths);
    StepCosts costs;
    for (std::size_t byte = 0; byte < costs.literals.size(); ++byte)
        costs.literals[byte] = symbols[byte] + 1;
    setMatchCosts(costs, std::span(symbols).subspan<literalSymbols, lengthSlots>(),
                  idealCosts(counts.distances));
    return costs;
}

StepCosts costsBefore(std::span<const std::uint8_t> bytes)
{
    constexpr double usualLength = 6;
    constexpr double usualDistance = 4;
    std::array<std::uint32_t, 256> counts{};
    for (const std::uint8_t byte : bytes)
        ++counts[byte];
    const std::ptrdiff_t used = usedOf(counts);
    StepCosts costs;
    for (std::size_t byte = 0; byte < counts.size(); ++byte) {
        costs.literals[byte] = used > fewBytes ? costOf(counts[byte], static_cast<double>(bytes.size()))
                                               : costOf(std::log2(static_cast<double>(used + 1)));
        costs.literals[byte] += 1;
    }
    std::array<std::uint32_t, lengthSlots> lengths;
    lengths.fill(costOf(usualLength));
    std::array<std::uint32_t, distanceSlots> distances;
    distances.fill(costOf(usualDistance));
    setMatchCosts(costs, lengths, distances);
    return costs;
}

} // namespace lumora
