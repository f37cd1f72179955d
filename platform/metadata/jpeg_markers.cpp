// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/jpeg_markers.h"

#include "system/file_bytes.h"

namespace lumora {

namespace {

// Nothing belongs to it but its two bytes.
bool standsAlone(unsigned char code)
{
    constexpr unsigned char temporary = 0x01;
    constexpr unsigned char firstRestart = 0xD0;
    return code == temporary || (code >= firstRestart && code <= JpegCode::endOfImage);
}

} // namespace

std::optional<JpegMarker> jpegMarkerAt(int descriptor, std::uint64_t at)
{
    constexpr unsigned char filling = 0xFF;
    for (;; ++at) {
        auto head = bytesAt(descriptor, at, JpegMarker::headSize);
        if (!head) head = bytesAt(descriptor, at, 2); // the last marker of a file has no length
        if (!head || (*head)[0] != '\xFF') return std::nullopt;
        const auto code = static_cast<unsigned char>((*head)[1]);
        if (code == filling) continue;
        if (standsAlone(code)) return JpegMarker{code, at, 2};
        const std::uint64_t size = bigEndianAt(*head, 2, 2);
        if (size < 2) return std::nullopt;
        return JpegMarker{code, at, 2 + size};
    }
}

} // namespace lumora
