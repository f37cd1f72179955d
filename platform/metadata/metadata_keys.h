// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Names of entries that the metadata library has no name for. For the metadata code only.
#pragma once

#include <string_view>

namespace lumora::metadata {

// A text chunk of a PNG: this, then its keyword.
inline constexpr std::string_view pngText = "Png.Text.";
// A remark in a GIF.
inline constexpr std::string_view gifComment = "Gif.Comment";
// Dots an inch as two doubles, of a PNG and of a JFIF header.
inline constexpr std::string_view pngDensity = "Png.Density";
inline constexpr std::string_view jfifDensity = "Jfif.Density";

} // namespace lumora::metadata
