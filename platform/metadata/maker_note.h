// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The private block in which a camera keeps its own fields. Its inner offsets often count from the start of
// the whole EXIF block, so a copy of its bytes at another place is garbage: notes that the metadata library
// knows are written anew from their fields, notes known to need nothing around them are copied, and all
// others stay where they lay or are left out. Any thread. Throws Exiv2::Error and standard exceptions.
#pragma once

#include "exiv2_library.h"

#include <cstddef>
#include <limits>

namespace lumora {

// Fields of a note that hold a preview, which would show the picture as it was, or point at data outside it.
bool isLeftBehind(const Exiv2::Exifdatum& datum);

// Whether there is a note of a kind that the metadata library does not know.
bool hasUnknownNote(const Exiv2::ExifData& data);

// Adds where such a note lies in the block that the data were read from, as the metadata library does for
// those that it knows.
void addNotePlace(const std::string& block, Exiv2::ExifData& data);

struct NoteLimits
{
    std::size_t longestBlock = std::numeric_limits<std::size_t>::max();
    bool mayStayInPlace = true; // whether the block will be written as it is
};

// The EXIF block in the byte order of the note, with the note written anew when reading the block back gives
// every field of it again, else with the note's own bytes at their old place when that does, otherwise
// without.
std::string encodedWithMakerNote(Exiv2::ExifData data, const NoteLimits& limits = {});

} // namespace lumora
