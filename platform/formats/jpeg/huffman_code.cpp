// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/huffman_code.h"

#include <algorithm>
#include <cstddef>

namespace lumora {
namespace {

// Stands last among the symbols, so that the longest code is its own: the one of ones only.
constexpr std::size_t reserved = 256;
constexpr std::size_t longest = 16;

using Lengths = std::array<std::size_t, reserved + 1>;

// Symbols that have found together share one length more with every other that joins them.
struct Group
{
    std::uint64_t count;
    std::vector<std::size_t> symbols;
};

// The rarest; of several the one of the highest symbol.
Group takeRarest(std::vector<Group>& groups)
{
    const auto rarest = std::ranges::min_element(groups, [](const Group& a, const Group& b) {
        return a.count != b.count ? a.count < b.count : a.symbols.front() > b.symbols.front();
    });
    Group group = std::move(*rarest);
    groups.erase(rarest);
    return group;
}

Lengths lengthsFor(const SymbolCounts& counts)
{
    std::vector<Group> groups;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
        if (counts[symbol] > 0) groups.push_back({counts[symbol], {symbol}});
    }
    groups.push_back({1, {reserved}});
    Lengths lengths{};
    while (groups.size() > 1) {
        Group group = takeRarest(groups);
        const Group next = takeRarest(groups);
        group.count += next.count;
        group.symbols.insert(group.symbols.end(), next.symbols.begin(), next.symbols.end());
        for (const std::size_t symbol : group.symbols)
            ++lengths[symbol];
        groups.push_back(std::move(group));
    }
    return lengths;
}

// Two codes that are too long become one bit shorter by half; the other half lengthens a shorter code.
void shorten(Lengths& countOfLength)
{
    for (std::size_t length = reserved; length > longest; --length) {
        while (countOfLength[length] > 0) {
            std::size_t shorter = length - 2;
            while (countOfLength[shorter] == 0)
                --shorter;
            countOfLength[length] -= 2;
            ++countOfLength[length - 1];
            countOfLength[shorter + 1] += 2;
            --countOfLength[shorter];
        }
    }
}

} // namespace

HuffmanCode shortestCode(const SymbolCounts& counts)
{
    const Lengths lengths = lengthsFor(counts);
    Lengths countOfLength{};
    for (const std::size_t length : lengths)
        ++countOfLength[length];
    countOfLength[0] = 0;
    shorten(countOfLength);
    std::size_t last = longest;
    while (last > 0 && countOfLength[last] == 0)
        --last;
    if (last > 0) --countOfLength[last]; // the reserved one

    HuffmanCode code;
    for (std::size_t symbol = 0; symbol < counts.size(); ++symbol) {
        if (counts[symbol] > 0) code.symbols.push_back(static_cast<std::uint8_t>(symbol));
    }
    std::ranges::stable_sort(code.symbols, {}, [&](std::uint8_t symbol) { return lengths[symbol]; });
    unsigned bits = 0;
    auto next = code.symbols.begin();
    for (std::size_t length = 1; length <= longest; ++length, bits <<= 1U) {
        code.countOfLength[length - 1] = static_cast<std::uint8_t>(countOfLength[length]);
        for (std::size_t i = 0; i < countOfLength[length]; ++i, ++bits)
            code.words[*next++] = {static_cast<std::uint16_t>(bits), static_cast<std::uint8_t>(length)};
    }
    return code;
}

} // namespace lumora
