// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// lumora-samples DIR: makes a small folder of images to try Lumora on.
#include "samples/pictures.h"

#include <exception>
#include <iostream>

namespace {

void writeSamples(const std::filesystem::path& folder)
{
    using namespace lumora::samples;
    std::filesystem::create_directories(folder / "album");
    writePhotograph(folder / "landscape.jpg", {3600, 2400}, 1);
    writeRotatedPhotograph(folder / "portrait.jpg", {1800, 1200}, 2);
    writeDisc(folder / "disc.png", {800, 800});
    writePhotograph(folder / "album" / "scan.tif", {1200, 900}, 3);
    writePhotograph(folder / "album" / "drawing.gif", {600, 400}, 4);
    writePhotograph(folder / "album" / "walk in the park.webp", {1600, 1200}, 5);
}

} // namespace

int main(int argc, char* argv[])
{
    if (argc != 2) {
        std::cerr << "usage: lumora-samples DIR\n";
        return 2;
    }
    try {
        writeSamples(argv[1]);
    } catch (const std::exception& error) {
        std::cerr << "lumora-samples: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
