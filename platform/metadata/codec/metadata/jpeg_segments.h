// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The segments before a JPEG's picture. Any thread; throws std::bad_alloc.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace lumora {

struct JpegSegment
{
    unsigned char marker; // the second byte of it
    std::uint64_t at;     // of the content in the file
    std::string content;
};

// Application segments and remarks, up to where the file stops being a sound JPEG. `start` is where the
// picture begins: a file may hold several. The file's position stays where it is.
std::vector<JpegSegment> jpegSegments(int descriptor, std::uint64_t start = 0);

// What the segments of an XMP packet, of its extension and of EXIF begin with, the final zeros included.
extern const std::string jpegXmpSignature;
extern const std::string jpegExtendedXmpSignature;

// The extension that belongs to the packet, put together; empty unless every byte of it is there.
std::string extendedXmpOf(const std::vector<JpegSegment>& segments, const std::string& packet);

} // namespace lumora
