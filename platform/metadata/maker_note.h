// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The private block in which a camera keeps its own fields. Its inner offsets often count from the start of
// the whole EXIF block, so a copy of its bytes at another place is garbage: notes that the metadata library
// knows are written anew from their fields, notes known to need nothing around them are copied, and all
// others are left out. Any thread. Throws Exiv2::Error and standard exceptions.
#pragma once

#include "exiv2_library.h"

namespace lumora {

// Fields of a note that hold a preview, which would show the picture as it was, or point at data outside it.
bool isLeftBehind(const Exiv2::Exifdatum& datum);

// The EXIF block in the byte order of the note, with the note when reading the block back gives every field
// of it again, otherwise without.
std::string encodedWithMakerNote(Exiv2::ExifData data);

} // namespace lumora
