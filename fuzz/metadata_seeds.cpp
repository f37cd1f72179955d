// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Writes first inputs of the metadata fuzzer that no program at hand makes from nothing, EXIF blocks with a
// camera maker's note, into the folder that is named.
#include "tests/support/exif_builder.h"

#include <filesystem>
#include <fstream>

namespace {

using lumora::test::ExifBuilder;

void write(const std::filesystem::path& file, const std::string& block)
{
    std::ofstream(file, std::ios::binary) << 'e' << block;
}

std::string noteWithHeader(const ExifBuilder& exif)
{
    return std::string("Nikon\0\2\x10\0\0", 10) + "MM" + exif.number(42, 2) + exif.number(8, 4) +
           exif.directory({{0x0094, "sat 94"}, {0x00AA, "sat aa"}}, 8);
}

} // namespace

int main(int, char** arguments)
{
    const std::filesystem::path folder(arguments[1]);
    for (const bool isBigEndian : {false, true}) {
        const ExifBuilder exif(isBigEndian);
        const std::string order = isBigEndian ? "big" : "little";
        const std::string note = exif.directory({{0x0006, "Image type"}, {0x0007, "Firmware"}}, 172);
        write(folder / ("note-" + order), exif.block("Canon", note));
        write(folder / ("unknown-note-" + order), exif.block("Acme", note));
    }
    const ExifBuilder exif(true);
    write(folder / "note-with-header", exif.block("NIKON CORPORATION", noteWithHeader(exif)));
    write(folder / "note-copied",
          exif.block("Apple", std::string("Apple iOS\0\0\1MM", 14) + exif.number(1, 2) +
                                  exif.entry(0x000A, 9, 1, 3) + exif.number(0, 4)));
}
