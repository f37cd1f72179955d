// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "format_io.h"

#include <algorithm>
#include <array>

namespace lumora {
namespace {

constexpr std::array<const Codec*, 9> table{&jpegCodec, &pngCodec,  &gifCodec,  &tiffCodec, &bmpCodec,
                                            &avifCodec, &heicCodec, &heifCodec, &webpCodec};

void allow(const char* operation)
{
    if (operation) allowOperation(operation);
}

} // namespace

const Codec& codecOf(const Format& format)
{
    return **std::ranges::find_if(table, [&](const Codec* codec) { return &codec->format == &format; });
}

void allowOperations()
{
    static const bool allowed = [] {
        ensureVipsReady();
        for (const Codec* codec : table) {
            allow(codec->reader.operation);
            if (codec->writer) allow(codec->writer->operation);
        }
        return true;
    }();
    static_cast<void>(allowed);
}

} // namespace lumora
