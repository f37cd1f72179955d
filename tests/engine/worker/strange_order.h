// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a file tells the strange worker to do, in bytes behind its picture.
#pragma once

#include <string>
#include <string_view>

namespace lumora::test {

enum class StrangeOrder : char {
    none,
    dieOnOpening,
    dieEncoding,
    sleep,
    spinEncoding,
    talkNonsense,
    leave,
    startProgram,
    runShortOfMemory,
    lieAboutOutput,
    dieIfRich,
    eatMemory,
    dieWithOneProcessor,
};

inline constexpr std::string_view orderMark = "strange order ";

inline std::string orderText(StrangeOrder order)
{
    return std::string(orderMark) + static_cast<char>(order);
}

} // namespace lumora::test
