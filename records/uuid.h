// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A random UUID (version 4), the identity of a result row and part of temporary file names. Thread-safe.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <string>

namespace lumora {

class Uuid
{
public:
    static Uuid random();

    // The standard hyphenated text, upper case, 36 characters.
    std::string toString() const;

    auto operator<=>(const Uuid&) const = default;

private:
    std::array<std::uint8_t, 16> m_bytes{};
};

} // namespace lumora
