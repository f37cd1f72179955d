// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/documents/words.h"

namespace lumora::cli {

std::string capitalized(std::string_view text)
{
    std::string result(text);
    if (!result.empty() && result[0] >= 'a' && result[0] <= 'z')
        result[0] = static_cast<char>(result[0] - 'a' + 'A');
    return result;
}

std::string replaced(std::string_view text, char what, std::string_view by)
{
    std::string result;
    for (const char c : text) {
        if (c == what)
            result += by;
        else
            result += c;
    }
    return result;
}

} // namespace lumora::cli
