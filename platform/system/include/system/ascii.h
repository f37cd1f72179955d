// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Letters without the C library, whose own depend on the locale.
#pragma once

namespace lumora {

// A to Z become a to z; every other byte stays, those of other letters too.
constexpr char asciiLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace lumora
