// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_samples.h"

#include <bit>
#include <cmath>
#include <cstring>

namespace lumora {
namespace {

static_assert(std::endian::native == std::endian::little);

std::uint64_t packedBits(std::span<const std::uint8_t> row, std::size_t at, int bits)
{
    std::uint64_t value = 0;
    for (const std::size_t end = at + static_cast<std::size_t>(bits); at < end; ++at)
        value = value << 1U | (static_cast<unsigned>(row[at / 8]) >> (7 - at % 8) & 1U);
    return value;
}

std::uint64_t bitsAt(std::span<const std::uint8_t> row, std::size_t index, int bits)
{
    const auto width = static_cast<std::size_t>(bits);
    if (bits % 8 != 0) return packedBits(row, index * width, bits);
    std::uint64_t value = 0;
    std::memcpy(&value, row.data() + index * width / 8, width / 8);
    return value;
}

// Floating point of fewer bits: a sign, an exponent and a fraction.
double smallReal(std::uint64_t value, int exponentBits, int fractionBits)
{
    const auto fractionMask = (std::uint64_t{1} << static_cast<unsigned>(fractionBits)) - 1;
    const auto exponentMask = (std::uint64_t{1} << static_cast<unsigned>(exponentBits)) - 1;
    const auto fraction = static_cast<double>(value & fractionMask);
    const auto exponent = static_cast<int>(value >> static_cast<unsigned>(fractionBits) & exponentMask);
    const int bias = static_cast<int>(exponentMask >> 1U);
    const bool isNegative = (value >> static_cast<unsigned>(exponentBits + fractionBits) & 1U) != 0;
    double size = 0;
    if (exponent == static_cast<int>(exponentMask)) {
        size = fraction == 0 ? HUGE_VAL : std::nan("");
    } else if (exponent == 0) {
        size = std::ldexp(fraction, 1 - bias - fractionBits);
    } else {
        size = std::ldexp(fraction + std::ldexp(1.0, fractionBits), exponent - bias - fractionBits);
    }
    return isNegative ? -size : size;
}

double real(std::uint64_t value, int bits)
{
    switch (bits) {
    case 16:
        return smallReal(value, 5, 10);
    case 24:
        return smallReal(value, 7, 16);
    case 32:
        return std::bit_cast<float>(static_cast<std::uint32_t>(value));
    default:
        return std::bit_cast<double>(value);
    }
}

} // namespace

double tiffSample(std::span<const std::uint8_t> row, std::size_t index, TiffSample sample, int bits)
{
    const std::uint64_t value = bitsAt(row, index, bits);
    if (sample == TiffSample::natural) return static_cast<double>(value);
    if (sample == TiffSample::real) return real(value, bits);
    const auto unused = static_cast<unsigned>(64 - bits);
    return static_cast<double>(static_cast<std::int64_t>(value << unused) >> unused);
}

SampleRange wholeRange(TiffSample sample, int bits)
{
    if (sample == TiffSample::real) return {};
    if (sample == TiffSample::natural) return {0, std::ldexp(1.0, bits) - 1};
    const double half = std::ldexp(1.0, bits - 1);
    return {-half, half - 1};
}

} // namespace lumora
