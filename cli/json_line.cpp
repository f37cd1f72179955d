// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// By hand: the library that reads JSON takes seconds to compile, and all that is written here are six values.
#include "cli/json_line.h"

#include "system/utf8.h"

#include <cstdio>

namespace lumora::cli {

namespace {

constexpr char32_t escapeBase = 0xEF00;

bool isEscape(char32_t c)
{
    return c >= escapeBase + 0x80 && c <= escapeBase + 0xFF;
}

void appendUnit(std::string& text, unsigned unit)
{
    char escaped[7];
    std::snprintf(escaped, sizeof escaped, "\\u%04x", unit & 0xFFFFu);
    text += escaped;
}

void appendCharacter(std::string& text, char32_t c)
{
    if (c == U'"' || c == U'\\') text += '\\';
    if (c >= 0x20 && c < 0x7F) {
        text += static_cast<char>(c);
    } else if (c < 0x10000) {
        appendUnit(text, c);
    } else { // a surrogate pair
        appendUnit(text, 0xD800u + ((c - 0x10000u) >> 10u));
        appendUnit(text, 0xDC00u + (c & 0x3FFu));
    }
}

} // namespace

std::string jsonString(std::string_view bytes)
{
    std::string text = "\"";
    while (!bytes.empty()) {
        const auto character = firstCodePoint(bytes);
        const std::size_t length = character ? character->length : 1;
        if (character && !isEscape(character->value))
            appendCharacter(text, character->value);
        else
            for (const char c : bytes.substr(0, length))
                appendUnit(text, escapeBase + static_cast<unsigned char>(c));
        bytes.remove_prefix(length);
    }
    return text + '"';
}

std::string jsonLine(const ProcessingResult& result)
{
    return "{\"source\":" + jsonString(result.sourceURL.native()) +
           ",\"output\":" + (result.outputURL ? jsonString(result.outputURL->native()) : "null") +
           ",\"originalBytes\":" + std::to_string(result.originalBytes) +
           ",\"outputBytes\":" + std::to_string(result.outputBytes) +
           ",\"message\":" + jsonString(result.message) +
           ",\"success\":" + (result.isSuccess ? "true" : "false") + "}";
}

} // namespace lumora::cli
