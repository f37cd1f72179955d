// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/byte_count_text.h"

#include <array>
#include <langinfo.h>

namespace lumora {
namespace {

struct Unit
{
    std::string_view name;
    std::uint64_t bytes;
    std::uint64_t partsInOne; // 10 for each fraction digit
};

constexpr std::array<Unit, 6> units{{
    {"KB", 1'000, 1},
    {"MB", 1'000'000, 10},
    {"GB", 1'000'000'000, 100},
    {"TB", 1'000'000'000'000, 100},
    {"PB", 1'000'000'000'000'000, 100},
    {"EB", 1'000'000'000'000'000'000, 100},
}};

// The count in the smallest fractions that the unit shows. A part is at least 1000 bytes, so nothing can
// overflow.
std::uint64_t roundedParts(std::uint64_t bytes, const Unit& unit)
{
    const std::uint64_t part = unit.bytes / unit.partsInOne;
    return bytes / part + (bytes % part >= part / 2 ? 1 : 0);
}

std::string numberText(std::uint64_t parts, const Unit& unit, std::string_view decimalSeparator)
{
    std::string text = std::to_string(parts / unit.partsInOne);
    std::uint64_t fraction = parts % unit.partsInOne;
    if (fraction == 0) return text;
    text += decimalSeparator;
    for (std::uint64_t place = unit.partsInOne / 10; fraction != 0; place /= 10) {
        text += static_cast<char>('0' + fraction / place);
        fraction %= place;
    }
    return text;
}

std::string absoluteText(std::uint64_t bytes, std::string_view decimalSeparator)
{
    if (bytes == 0) return "Zero KB";
    if (bytes == 1) return "1 byte";
    if (bytes < 1000) return std::to_string(bytes) + " bytes";
    const Unit* unit = units.begin();
    while (unit + 1 != units.end() && roundedParts(bytes, *unit) >= 1000 * unit->partsInOne)
        ++unit;
    return numberText(roundedParts(bytes, *unit), *unit, decimalSeparator) + " " + std::string(unit->name);
}

} // namespace

std::string byteCountText(std::int64_t bytes, std::string_view decimalSeparator)
{
    const auto bits = static_cast<std::uint64_t>(bytes);
    // Negated as unsigned: the smallest count has no positive counterpart.
    return bytes < 0 ? "-" + absoluteText(0 - bits, decimalSeparator) : absoluteText(bits, decimalSeparator);
}

std::string byteCountText(std::int64_t bytes)
{
    // Not localeconv(), whose answer is shared by all threads.
    return byteCountText(bytes, nl_langinfo(RADIXCHAR));
}

} // namespace lumora
