// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a colour profile calls itself. Thread-safe.
#pragma once

#include <cstdint>
#include <span>
#include <string>

namespace lumora {

// The profile's English description in UTF-8; empty for bytes that are not a profile or have none.
std::string profileDescription(std::span<const std::uint8_t> profile);

} // namespace lumora
