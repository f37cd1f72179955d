// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/printable.h"

#include "system/utf8.h"

#include <cstdio>

namespace lumora::cli {

namespace {

bool breaksLine(char32_t c)
{
    const bool isControl = c < 0x20 || (c >= 0x7F && c <= 0x9F);
    const bool isSeparator = c == 0x2028 || c == 0x2029;
    const bool turnsDirection = (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    return isControl || isSeparator || turnsDirection;
}

std::string escaped(const char* format, unsigned value)
{
    char text[16];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

std::string escaped(char32_t c)
{
    if (c == U'\n') return "\\n";
    if (c == U'\t') return "\\t";
    if (c == U'\r') return "\\r";
    return c < 0x80 ? escaped("\\x%02x", c) : escaped("\\u{%x}", c);
}

} // namespace

std::string printable(std::string_view text)
{
    std::string line;
    while (!text.empty()) {
        const auto character = firstCodePoint(text);
        const std::size_t length = character ? character->length : 1;
        if (!character)
            line += escaped("\\x%02x", static_cast<unsigned char>(text.front()));
        else if (breaksLine(character->value))
            line += escaped(character->value);
        else
            line += text.substr(0, length);
        text.remove_prefix(length);
    }
    return line;
}

std::string elided(std::string_view text, std::size_t limit)
{
    std::size_t characters = 0;
    std::size_t cut = 0;
    for (std::size_t at = 0; at < text.size(); ++characters) {
        if (characters == limit) return std::string(text.substr(0, cut)) + "…";
        if (characters + 1 < limit) cut = at + firstCodePoint(text.substr(at))->length;
        at += firstCodePoint(text.substr(at))->length;
    }
    return std::string(text);
}

} // namespace lumora::cli
