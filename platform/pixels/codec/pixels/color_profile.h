// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The colour profile of a picture and what it calls itself. Thread-safe for different pictures.
#pragma once

#include <cstdint>
#include <span>
#include <string>

struct _VipsImage;

namespace lumora {

// Empty without one. Valid like the bytes of blobOf().
std::span<const std::uint8_t> attachedProfile(_VipsImage* image);

// The profile's English description in UTF-8; empty for bytes that are not a profile or have none.
std::string profileDescription(std::span<const std::uint8_t> profile);

// Whether the components that it describes are light itself, of which 8 bits say too little in the dark.
bool countsLight(std::span<const std::uint8_t> profile);

} // namespace lumora
