// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Writes the first inputs of the BMP fuzzer, one file of each kind, into the folder that is named.
#include "tests/platform/formats/bmp/bmp_builder.h"

#include <filesystem>
#include <fstream>
#include <utility>

namespace {

using lumora::test::BmpBuilder;

const std::vector<std::uint32_t> colors{0x000000, 0xFF0000, 0x00FF00, 0x0000FF};
const std::vector<std::uint32_t> masks{0xFF0000, 0xFF00, 0xFF, 0xFF000000};
const std::vector<std::uint32_t> narrowMasks{0xF800, 0x07E0, 0x001F};
const std::vector<std::uint8_t> pixels{255, 0, 0, 0, 255, 255, 255, 64, 0, 0, 255, 128, 0, 255, 0, 255};

const std::vector<std::pair<const char*, BmpBuilder>> seeds{
    {"core-24", {.headerSize = 12, .pixels = pixels}},
    {"core-8", {.headerSize = 12, .bits = 8, .palette = colors, .pixels = {1, 2, 0, 0, 3, 0, 0, 0}}},
    {"os2-long", {.headerSize = 64, .pixels = pixels}},
    {"plain-24", {.pixels = pixels}},
    {"top-down", {.height = -2, .pixels = pixels}},
    {"plain-16", {.bits = 16, .pixels = pixels}},
    {"masked-16", {.bits = 16, .compression = 3, .masks = narrowMasks, .pixels = pixels}},
    {"masked-32", {.bits = 32, .compression = 6, .masks = masks, .pixels = pixels}},
    {"version4", {.headerSize = 108, .bits = 32, .compression = 3, .masks = masks, .pixels = pixels}},
    {"version5", {.headerSize = 124, .bits = 32, .compression = 3, .masks = masks, .pixels = pixels}},
    {"indexed-1", {.bits = 1, .colorsUsed = 2, .palette = colors, .pixels = {64, 0, 0, 0, 128, 0, 0, 0}}},
    {"indexed-4", {.bits = 4, .colorsUsed = 4, .palette = colors, .pixels = {18, 0, 0, 0, 48, 0, 0, 0}}},
    {"runs-8",
     {.bits = 8,
      .compression = 1,
      .colorsUsed = 4,
      .palette = colors,
      .pixels = {2, 1, 0, 0, 0, 2, 1, 0, 1, 2, 0, 1}}},
    {"runs-4",
     {.width = 4,
      .bits = 4,
      .compression = 2,
      .colorsUsed = 4,
      .palette = colors,
      .pixels = {4, 0x12, 0, 0, 0, 4, 0x12, 0x30, 0, 1}}},
};

} // namespace

int main(int, char** arguments)
{
    const std::filesystem::path folder(arguments[1]);
    for (const auto& [name, bmp] : seeds) {
        const std::vector<std::byte> file = bmp.file();
        std::ofstream stream(folder / (std::string(name) + ".bmp"), std::ios::binary);
        for (const std::byte value : file)
            stream.put(static_cast<char>(value));
    }
}
