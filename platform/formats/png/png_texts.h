// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The text chunks of a PNG file. The image library hands on only those that are sound UTF-8, and most
// programs write Latin-1. For the metadata code only; any thread.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace lumora {

struct PngText
{
    std::string keyword; // Latin-1, 1 to 79 bytes
    std::string text;    // UTF-8
};

// In the order of the file, up to where it stops being a sound PNG or 16 MiB are full. Texts above 4 MiB are
// left out, and so are those whose compression is damaged. Throws std::bad_alloc.
std::vector<PngText> readPngTexts(const std::filesystem::path& file);

} // namespace lumora
