// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/json_line.h"

#include "system/utf8.h"

#include <nlohmann/json.hpp>

namespace lumora::cli {

namespace {

constexpr char32_t escapeBase = 0xEF00;

bool isEscape(char32_t c)
{
    return c >= escapeBase + 0x80 && c <= escapeBase + 0xFF;
}

std::string reversibleUtf8(std::string_view bytes)
{
    std::string text;
    while (!bytes.empty()) {
        const auto character = firstCodePoint(bytes);
        const std::size_t length = character ? character->length : 1;
        if (character && !isEscape(character->value))
            text += bytes.substr(0, length);
        else
            for (const char c : bytes.substr(0, length))
                appendUtf8(text, escapeBase + static_cast<unsigned char>(c));
        bytes.remove_prefix(length);
    }
    return text;
}

} // namespace

std::string jsonLine(const ProcessingResult& result)
{
    nlohmann::ordered_json line;
    line["source"] = reversibleUtf8(result.sourceURL.native());
    line["output"] = nullptr;
    if (result.outputURL) line["output"] = reversibleUtf8(result.outputURL->native());
    line["originalBytes"] = result.originalBytes;
    line["outputBytes"] = result.outputBytes;
    line["message"] = reversibleUtf8(result.message);
    line["success"] = result.isSuccess;
    return line.dump(-1, ' ', true);
}

} // namespace lumora::cli
