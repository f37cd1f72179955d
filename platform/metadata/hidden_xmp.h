// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// XMP is read without the metadata library, which would parse it at once, wanted or not, in a time that grows
// with the square of its properties: the packet is found here and hidden from the library. Any thread; throws
// std::bad_alloc.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace lumora {

// At most a few bytes that the library is shown in place of the file's own.
struct Mask
{
    std::uint64_t at;
    std::string bytes;
};

struct XmpInFile
{
    std::string packet;      // the first; empty without one, or with one that is compressed
    std::string extension;   // of a JPEG's packet
    bool hasMore = false;    // one is too large, or there is but one that is compressed
    std::vector<Mask> masks; // in the order of the file
};

// Of an open JPEG, PNG, TIFF or WebP file, whose position stays where it is.
XmpInFile findXmp(int descriptor);

// Whether it can be a TIFF structure, which EXIF is, too.
bool beginsTiff(std::string_view block);

// Hides the packet in a TIFF structure.
void hideXmpOfTiff(std::string& block);
// What a tag that held a packet is called then.
bool isHiddenXmp(std::uint16_t tag);

} // namespace lumora
