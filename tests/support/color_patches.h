// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Rows of flat patches in any model, and what their colours are in sRGB by Little CMS alone, in floating
// point: relative colorimetric with black point compensation. Patches are flat so that no coding changes them
// much.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace lumora::test {

using Profile = std::vector<std::uint8_t>;
// Components from 0 to 1, an alpha among them; of Lab the customary numbers.
using Color = std::vector<double>;
using Colors = std::vector<Color>;

enum class Model { gray, rgb, cmyk, lab };

Profile grayProfile(double exponent);
// With the white of daylight; the curve of sRGB for an exponent of 0.
Profile rgbProfile(double redX, double redY, double greenX, double greenY, double blueX, double blueY,
                   double exponent);
// Of inks that are nothing like those of the generic profile.
Profile inkProfile();
// One that the image library carries.
Profile libraryProfile(const char* name);

struct PatchFile
{
    Model model = Model::rgb;
    Colors colors;
    int bits = 8;
    bool hasAlpha = false;
    bool isAssociated = false; // the alpha of a TIFF
    Profile profile = {};
};

inline constexpr int patchSize = 16;

// By the extension: png, tif, jpg. The colours become what the bits can hold.
void savePatches(const std::filesystem::path& file, PatchFile& patches);
// What a decoder independent of the product reads; a picture reduced to `scale` of its size has smaller
// patches.
PatchFile loadPatches(const std::filesystem::path& file, double scale = 1);

// 0 to 255, with an alpha. Without a profile rgb and gray are sRGB and inks those of printing.
Colors inSrgb(const PatchFile& patches);
// Whether the profile, if there is one, speaks of components like these.
bool isDescribed(const PatchFile& patches);

// Puts a chunk before the pixels of a PNG.
void insertChunk(const std::filesystem::path& png, const std::string& type, const std::string& data);
std::string bigEndianNumbers(const std::vector<std::uint32_t>& numbers);

} // namespace lumora::test
