// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/file_copy.h"

#include "format_io.h"

#include <new>

namespace lumora {

Result<bool> copyFile(int descriptor, std::string_view typeIdentifier, const LeftOut& leftOut,
                      OutputFile& output)
try {
    const Format* const format = formatWithIdentifier(typeIdentifier);
    const auto piecesOf = format ? codecOf(*format).reader.pieces : nullptr;
    if (!piecesOf) return false;
    const auto pieces = piecesOf(descriptor, leftOut);
    if (!pieces) return false;
    return appendPieces(descriptor, *pieces, output);
} catch (const std::bad_alloc&) {
    return outOfMemory();
}

} // namespace lumora
