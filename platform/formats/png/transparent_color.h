// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Transparency told by the colour of the pixels, which takes no component of its own. Any thread.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace lumora {

// The colour that tells which of the pixels are transparent; empty where all are opaque. Each pixel is
// `colorBytes` of colour and `alphaBytes` of straight alpha. Absent when no colour can tell: some are partly
// transparent, those that are not visible differ, or an opaque one has their colour.
std::optional<std::span<const std::uint8_t>> transparentColor(std::span<const std::uint8_t> pixels,
                                                              std::size_t colorBytes, std::size_t alphaBytes);

} // namespace lumora
