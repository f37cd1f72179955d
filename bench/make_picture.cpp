// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// make_picture WIDTH HEIGHT FILE: writes a picture of any size without holding it, in the format that the
// name says: soft colours with a little noise, which is about as hard to compress as a photograph.
#include <vips/vips.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace {

// The same at every call, and quick.
unsigned noiseAt(unsigned x, unsigned y)
{
    unsigned value = x * 0x9E3779B1U ^ y * 0x85EBCA77U;
    value ^= value >> 15U;
    value *= 0x2C1B3C6DU;
    return value >> 28U;
}

int generate(VipsRegion* region, void*, void*, void*, gboolean*)
{
    const VipsRect& area = region->valid;
    for (int y = 0; y < area.height; ++y) {
        VipsPel* pixel = region->data + std::ptrdiff_t{y} * region->bpl;
        for (int x = 0; x < area.width; ++x) {
            const int column = area.left + x;
            const int row = area.top + y;
            for (int band = 0; band < 3; ++band) {
                const double wave = 110 + 50 * std::sin(0.004 * column + band) + 50 * std::cos(0.003 * row);
                const unsigned noise =
                    noiseAt(static_cast<unsigned>(column * 3 + band), static_cast<unsigned>(row));
                *pixel++ = static_cast<VipsPel>(wave + noise);
            }
        }
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4 || VIPS_INIT(argv[0]) != 0) return 2;
    VipsImage* const image = vips_image_new();
    vips_image_init_fields(image, std::atoi(argv[1]), std::atoi(argv[2]), 3, VIPS_FORMAT_UCHAR,
                           VIPS_CODING_NONE, VIPS_INTERPRETATION_sRGB, 1, 1);
    vips_image_pipelinev(image, VIPS_DEMAND_STYLE_THINSTRIP, nullptr);
    vips_image_generate(image, nullptr, generate, nullptr, nullptr, nullptr);
    const bool isWritten = vips_image_write_to_file(image, argv[3], nullptr) == 0;
    if (!isWritten) std::fputs(vips_error_buffer(), stderr);
    g_object_unref(image);
    return isWritten ? 0 : 1;
}
