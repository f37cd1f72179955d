// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures that tests make for themselves, written through the image library, and what comes back of them.
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace lumora::test {

// 8-bit components, interleaved, top row first.
struct Pixels
{
    int width = 0;
    int height = 0;
    int bands = 3;
    std::vector<std::uint8_t> bytes;

    std::vector<int> at(int x, int y) const;
};

// A smooth picture with some detail: every corner has a colour of its own (red, green, blue, yellow,
// clockwise from the top left), so that a turned or mirrored copy is told apart.
Pixels corneredPicture(int width, int height);
Pixels uniformPicture(int width, int height, std::vector<std::uint8_t> color);

struct SaveOptions
{
    int orientation = 0;       // EXIF, 1 to 8; 0 for none
    bool sixteenBits = false;  // stored with 16 bits a component
    std::string profile = {};  // "srgb", "p3", "cmyk": a profile of the image library to embed
    bool grayProfile = false;  // a gamma of 2.2
    bool emptyProfile = false; // of RGB, and says nothing of what its colours are
    bool inkToCmyk = false;    // the four bands are inks
    bool interlaced = false;
    bool lossy = false;   // of a WebP
    int pageHeight = 0;   // pages or frames, one below the other in the pixels; 0 for one
    bool palette = false; // of a PNG
    int bits =
        0; // of a PNG's palette index or gray value, 1 to 8, or 1 of a TIFF; 0 for as many as are needed
};

// By the extension: jpg, png, tif, gif, webp, heic, avif.
void save(const std::filesystem::path& file, const Pixels& pixels, const SaveOptions& options = {});
// The bytes of a PNG whose header claims this size and whose data ends at once.
std::string pngClaiming(std::uint32_t width, std::uint32_t height);
void writeText(const std::filesystem::path& file, const std::string& bytes);
std::string readBytes(const std::filesystem::path& file);

// What a decoder independent of the product makes of a file: straight components, its own depth reduced to 8
// bits.
Pixels load(const std::filesystem::path& file);
// The bits a component and the number of components as stored.
struct Stored
{
    int bits;
    int bands;
    bool hasProfile;
    int orientation;
};
Stored inspect(const std::filesystem::path& file);

} // namespace lumora::test
