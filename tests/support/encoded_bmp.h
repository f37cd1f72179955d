// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "bmp/bmp_codec.h"

namespace lumora::test {

// The pieces of encodeBmp() in one.
inline std::vector<std::byte> encodedBmp(int width, int height, int channels, std::span<const std::byte> rows,
                                         std::span<const std::byte> profile = {})
{
    std::vector<std::byte> file;
    const auto status =
        encodeBmp(width, height, channels, rows, profile, [&](std::span<const std::byte> piece) -> Status {
            file.insert(file.end(), piece.begin(), piece.end());
            return Done{};
        });
    return status ? file : std::vector<std::byte>();
}

} // namespace lumora::test
