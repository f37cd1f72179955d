// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The text chunks of a PNG file. The image library hands on only those that are sound UTF-8, and most
// programs write Latin-1. Any thread.
#pragma once

#include "metadata/metadata.h"

#include <string>
#include <vector>

namespace lumora {

// In the order of the file, up to where it stops being a sound PNG or 16 MiB are full. Texts above 4 MiB are
// left out, and so are those whose compression is damaged. The file's position stays where it is. Throws
// std::bad_alloc.
std::vector<PngText> readPngTexts(int descriptor);

// The XMP packet that was stored compressed, or as hexadecimal digits; empty without one.
std::string xmpAmong(const std::vector<PngText>& texts);

// The content of the chunk that tells when the picture was last changed; empty without one. The file's
// position stays where it is.
std::string readPngTime(int descriptor);

} // namespace lumora
