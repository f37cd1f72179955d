// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_palette.h"

#include <algorithm>
#include <cstdint>
#include <span>

namespace lumora {

TiffPalette tiffPalette(const TiffFile& file, int bits)
{
    std::array<const std::uint16_t*, 3> parts{};
    if (TIFFGetField(file.get(), TIFFTAG_COLORMAP, &parts[0], &parts[1], &parts[2]) != 1) return {};
    const std::size_t count = std::size_t{1} << static_cast<unsigned>(bits);
    TiffPalette palette(count);
    for (std::size_t c = 0; c < parts.size(); ++c) {
        for (std::size_t i = 0; i < count; ++i)
            palette[i].at(c) = std::span(parts.at(c), count)[i];
    }
    // Some writers give 8 bits where the format has 16.
    const bool isNarrow = std::ranges::all_of(palette, [](const auto& color) {
        return std::ranges::all_of(color, [](double v) { return v < 256; });
    });
    for (auto& color : palette) {
        for (double& component : color)
            component /= isNarrow ? 255 : 65535;
    }
    return palette;
}

} // namespace lumora
