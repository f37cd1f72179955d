// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// JPEG files of every kind that the codec's own library writes, and places in them.
#pragma once

#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

#include <cstdint>
#include <cstdlib>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace lumora::test {

struct JpegKind
{
    const char* name;
    int components = 3;
    bool isProgressive = false;
    bool isArithmetic = false;
    bool isHalved = false; // the colours' resolution
    int restartRows = 0;
    bool hasAdobeMarker = true; // of inks
    bool hasScanForEach = false;
};

inline void PrintTo(const JpegKind& kind, std::ostream* out)
{
    *out << kind.name;
}

// Slopes and noise, so that no part of the data is like another.
inline std::vector<std::uint8_t> unevenPicture(int width, int height, int components)
{
    constexpr unsigned seed = 7;
    std::mt19937 random(seed);
    std::vector<std::uint8_t> bytes;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int c = 0; c < components; ++c)
                bytes.push_back(static_cast<std::uint8_t>(static_cast<unsigned>(x + y * (c + 1)) / 3 % 200 +
                                                          random() % 50));
        }
    }
    return bytes;
}

inline std::string jpegOf(const JpegKind& kind, int width, int height)
{
    std::vector<std::uint8_t> pixels = unevenPicture(width, height, kind.components);
    jpeg_compress_struct jpeg{};
    jpeg_error_mgr errors{};
    jpeg.err = jpeg_std_error(&errors);
    jpeg_create_compress(&jpeg);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&jpeg, &bytes, &size);
    jpeg.image_width = static_cast<JDIMENSION>(width);
    jpeg.image_height = static_cast<JDIMENSION>(height);
    jpeg.input_components = kind.components;
    jpeg.in_color_space = kind.components == 1 ? JCS_GRAYSCALE : kind.components == 3 ? JCS_RGB : JCS_CMYK;
    jpeg_set_defaults(&jpeg);
    jpeg_set_quality(&jpeg, 90, TRUE);
    jpeg.restart_in_rows = kind.restartRows;
    jpeg.arith_code = kind.isArithmetic ? TRUE : FALSE;
    if (!kind.isHalved) jpeg.comp_info[0].h_samp_factor = jpeg.comp_info[0].v_samp_factor = 1;
    if (kind.components == 4) jpeg.write_Adobe_marker = kind.hasAdobeMarker ? TRUE : FALSE;
    if (kind.isProgressive) jpeg_simple_progression(&jpeg);
    std::vector<jpeg_scan_info> scans;
    for (int c = 0; c < kind.components; ++c)
        scans.push_back({1, {c, 0, 0, 0}, 0, 63, 0, 0});
    if (kind.hasScanForEach) {
        jpeg.scan_info = scans.data();
        jpeg.num_scans = kind.components;
    }
    jpeg_start_compress(&jpeg, TRUE);
    while (jpeg.next_scanline < jpeg.image_height) {
        std::uint8_t* row = pixels.data() + std::size_t{jpeg.next_scanline} * jpeg.image_width *
                                                static_cast<unsigned>(kind.components);
        jpeg_write_scanlines(&jpeg, &row, 1);
    }
    jpeg_finish_compress(&jpeg);
    std::string file(bytes, bytes + size);
    jpeg_destroy_compress(&jpeg);
    std::free(bytes);
    return file;
}

// Where the last scan's header begins.
inline std::size_t lastScanOf(const std::string& jpeg)
{
    return jpeg.rfind("\xFF\xDA");
}

} // namespace lumora::test
