// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/utf8.h"

#include <glib.h>

#include <array>

namespace lumora {

std::optional<CodePoint> firstCodePoint(std::string_view text)
{
    // A character like others here, which GLib's strings end with.
    if (text.front() == '\0') return CodePoint{0, 1};
    const gunichar value = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
    if (value > 0x10FFFF) return std::nullopt;
    return CodePoint{value, static_cast<std::size_t>(g_unichar_to_utf8(value, nullptr))};
}

// Not g_utf8_validate(), which refuses a NUL.
bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const auto character = firstCodePoint(text);
        if (!character) return false;
        text.remove_prefix(character->length);
    }
    return true;
}

void appendUtf8(std::string& text, char32_t value)
{
    std::array<char, 6> bytes{};
    text.append(bytes.data(), static_cast<std::size_t>(g_unichar_to_utf8(value, bytes.data())));
}

} // namespace lumora
