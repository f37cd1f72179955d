// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/encoding_memory.h"

#include "format_io.h"

namespace lumora {

std::int64_t encodingMemory(std::string_view typeIdentifier, const EncodedShape& shape)
{
    const Format* const format = formatWithIdentifier(typeIdentifier);
    if (!format) return 0;
    const auto& writer = codecOf(*format).writer;
    return writer && writer->heldBytes ? writer->heldBytes(shape) : 0;
}

} // namespace lumora
