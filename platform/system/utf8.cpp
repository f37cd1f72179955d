// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/utf8.h"

#include <array>

namespace lumora {
namespace {

std::size_t sequenceLength(unsigned char lead)
{
    if (lead < 0x80) return 1;
    if (lead >= 0xC2 && lead <= 0xDF) return 2;
    if (lead >= 0xE0 && lead <= 0xEF) return 3;
    if (lead >= 0xF0 && lead <= 0xF4) return 4;
    return 0;
}

bool isScalarOfLength(char32_t value, std::size_t length)
{
    constexpr std::array<char32_t, 5> least{0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    return value >= least[length] && value <= 0x10FFFF && !isSurrogate;
}

} // namespace

std::optional<CodePoint> firstCodePoint(std::string_view text)
{
    const auto lead = static_cast<unsigned char>(text.front());
    const std::size_t length = sequenceLength(lead);
    if (length == 0 || length > text.size()) return std::nullopt;
    if (length == 1) return CodePoint{lead, 1};
    char32_t value = lead & (0x7Fu >> length);
    for (const char c : text.substr(1, length - 1)) {
        const auto byte = static_cast<unsigned char>(c);
        if ((byte & 0xC0) != 0x80) return std::nullopt;
        value = (value << 6) | (byte & 0x3Fu);
    }
    if (!isScalarOfLength(value, length)) return std::nullopt;
    return CodePoint{value, length};
}

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
    if (value < 0x80) {
        text += static_cast<char>(value);
        return;
    }
    const int continuations = value < 0x800 ? 1 : value < 0x10000 ? 2 : 3;
    text += static_cast<char>((0xFF00u >> (continuations + 1) & 0xFFu) | (value >> (6 * continuations)));
    for (int i = continuations - 1; i >= 0; --i)
        text += static_cast<char>(0x80u | (value >> (6 * i) & 0x3Fu));
}

} // namespace lumora
