// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One result as a line of JSON. Thread-safe.
#pragma once

#include "records/processing_result.h"

#include <string>
#include <string_view>

namespace lumora::cli {

// An object with exactly source, output (null when there is none), originalBytes, outputBytes, message and
// success, in pure ASCII, without the line's end. A byte 0xNN of a name or message that is not part of
// well-formed UTF-8 becomes the private character U+EFNN (0xNN is always at least 0x80); genuine characters
// U+EF80 to U+EFFF have their three bytes escaped the same way. So a reader gets the bytes back: each of
// those characters is one byte, every other character is its UTF-8 form. Lone surrogates were rejected
// because strict readers refuse them.
std::string jsonLine(const ProcessingResult& result);

// Any bytes as a string of JSON, its quotes included.
std::string jsonString(std::string_view bytes);

} // namespace lumora::cli
