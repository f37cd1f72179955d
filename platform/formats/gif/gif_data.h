// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Whether the first picture of a GIF file is all there. The decoder makes up what is missing. Pure; any
// thread.
#pragma once

#include <cstddef>
#include <span>

namespace lumora {

// Whether the codes of the first picture give each of its pixels. What follows them does not matter.
bool hasWholeGifPicture(std::span<const std::byte> file);

} // namespace lumora
