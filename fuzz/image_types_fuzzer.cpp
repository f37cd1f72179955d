// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Any bytes are of one known readable type or of none.
#include "fuzz/fuzzing.h"
#include "types/format.h"

#include <algorithm>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto bytes = std::as_bytes(std::span(data, size));
    const auto head = bytes.first(std::min(size, lumora::sniffLength));
    const lumora::Format* format = lumora::formatOfContent(head);
    if (!format) return 0;
    lumora::fuzz::require(lumora::formatWithIdentifier(format->identifier) == format);
    return 0;
}
