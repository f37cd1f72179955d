// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/string_tree.h"

#include "png/equal_bytes.h"

#include <algorithm>
#include <cstring>

namespace lumora {
namespace {

constexpr unsigned hashBits = 16;
constexpr std::int32_t none = -static_cast<std::int32_t>(windowBytes);

std::size_t hashOf(const std::uint8_t* bytes)
{
    std::uint32_t four = 0;
    std::memcpy(&four, bytes, sizeof four);
    return four * 0x9E3779B1U >> (32 - hashBits);
}

} // namespace

StringTree::StringTree()
    : m_roots(std::make_unique_for_overwrite<std::int32_t[]>(std::size_t{1} << hashBits)),
      m_children(std::make_unique_for_overwrite<std::int32_t[]>(2 * windowBytes))
{
    std::fill_n(m_roots.get(), std::size_t{1} << hashBits, none);
}

// Takes the old tree apart on the way down: what is less goes to the one side of the new string, what is
// greater to the other. A string that is equal gives its place to the new one.
template <typename Report>
void StringTree::insert(const std::uint8_t* data, std::size_t position, std::size_t most,
                        const Report& report)
{
    const auto here = static_cast<std::int32_t>(position);
    const std::int32_t tooFar = here - static_cast<std::int32_t>(windowBytes);
    const auto childrenOf = [&](std::int32_t at) {
        return m_children.get() + 2 * (static_cast<std::size_t>(at) % windowBytes);
    };
    const std::uint8_t* const string = data + position;
    std::int32_t& root = m_roots[hashOf(string)];
    std::int32_t other = root;
    root = here;
    std::int32_t* less = childrenOf(here);
    std::int32_t* greater = less + 1;
    std::size_t equalToLess = 0;
    std::size_t equalToGreater = 0;
    for (int steps = 0; other > tooFar && steps < mostSteps; ++steps) {
        std::int32_t* const children = childrenOf(other);
        const std::uint8_t* const otherString = data + other;
        std::size_t equal = std::min(equalToLess, equalToGreater);
        if (otherString[equal] == string[equal]) {
            equal = equalBytes(string, otherString, equal + 1, most);
            report(equal, here - other);
            if (equal == most) {
                *less = children[0];
                *greater = children[1];
                return;
            }
        }
        if (otherString[equal] < string[equal]) {
            *less = other;
            less = children + 1;
            other = *less;
            equalToLess = equal;
        } else {
            *greater = other;
            greater = children;
            other = *greater;
            equalToGreater = equal;
        }
    }
    *less = none;
    *greater = none;
}

std::size_t StringTree::add(const std::uint8_t* data, std::size_t position, std::size_t most, Matches& found)
{
    std::size_t count = 0;
    std::size_t longest = shortestMatch;
    insert(data, position, most, [&](std::size_t length, std::int32_t distance) {
        if (length <= longest) return;
        longest = length;
        found[count++] = {static_cast<std::uint16_t>(length), static_cast<std::uint16_t>(distance)};
    });
    return count;
}

void StringTree::add(const std::uint8_t* data, std::size_t position, std::size_t most)
{
    insert(data, position, most, [](std::size_t, std::int32_t) {});
}

} // namespace lumora
