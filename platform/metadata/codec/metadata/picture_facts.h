// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>

namespace lumora {

// What the metadata must say about the picture that it travels with.
struct PictureFacts
{
    std::int64_t width; // pixels
    std::int64_t height;
    bool isSrgb;
    std::string profileName;  // description of the embedded colour profile; empty without one
    bool isJpegColor = false; // colours stored as brightness and two differences
};

// As EXIF numbers them: sRGB, or left to the profile.
inline std::uint16_t exifColorSpace(const PictureFacts& facts)
{
    return facts.isSrgb ? 1 : 0xFFFF;
}

} // namespace lumora
