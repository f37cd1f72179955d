// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the header of a BMP file says of the rest, checked.
#pragma once

#include "bmp/bmp_codec.h"

#include <array>
#include <cstdint>

namespace lumora {

struct BmpColor
{
    std::byte red;
    std::byte green;
    std::byte blue;
};

enum class BmpCoding { plain, runs4, runs8 };

struct BmpLayout
{
    BmpHeader header;
    bool isTopDown;
    BmpCoding coding;
    std::vector<BmpColor> palette;      // up to 8 bits a pixel, at least one colour
    std::array<std::uint32_t, 4> masks; // red, green, blue, alpha; of 16 and 32 bits a pixel
    std::span<const std::byte> pixels;  // from the first to the end of the file
};

Result<BmpLayout> readBmpLayout(std::span<const std::byte> file);

// Palette indices of a run-length coded picture in the order of the file's rows, width x height.
Result<std::vector<std::uint8_t>> decodeBmpRuns(const BmpLayout& layout);

} // namespace lumora
