// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "samples/pictures.h"

#include <vips/vips8>

#include <stdexcept>

namespace lumora::samples {

namespace {

using vips::VImage;

void startLibrary()
{
    static const bool started = vips_init("lumora") == 0;
    if (!started) throw std::runtime_error("the image library does not start");
}

// One octave after another of smooth noise, each finer and weaker, 0 to 255.
VImage clouds(SampleSize size, int seed)
{
    VImage sum = VImage::black(size.width, size.height);
    double weight = 0.5;
    for (int cell = 256; cell >= 8; cell /= 2, weight /= 2) {
        VImage octave = VImage::perlin(size.width, size.height,
                                       VImage::option()->set("cell_size", cell)->set("seed", seed + cell));
        sum = sum + octave * (weight * 127);
    }
    return sum + 128;
}

VImage photograph(SampleSize size, int seed)
{
    VImage sky = VImage::grey(size.width, size.height)
                     .rot90()
                     .resize(static_cast<double>(size.width) / size.height,
                             VImage::option()->set("vscale", static_cast<double>(size.height) / size.width));
    sky = sky.crop(0, 0, size.width, size.height) * 90;
    VImage grain = VImage::gaussnoise(size.width, size.height,
                                      VImage::option()->set("mean", 0)->set("sigma", 3)->set("seed", seed));
    VImage red = clouds(size, seed) * 0.7 + sky + grain;
    VImage green = clouds(size, seed + 1) * 0.6 + sky + grain;
    VImage blue = clouds(size, seed + 2) * 0.5 - sky + 90 + grain;
    return red.bandjoin(green)
        .bandjoin(blue)
        .cast(VIPS_FORMAT_UCHAR)
        .copy(VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
}

VImage disc(SampleSize size)
{
    VImage at = VImage::xyz(size.width, size.height);
    VImage fromLeft = at.extract_band(0) * (255.0 / size.width);
    VImage fromTop = at.extract_band(1) * (255.0 / size.height);
    VImage x = fromLeft - 127.5;
    VImage y = fromTop - 127.5;
    VImage alpha = (x * x + y * y).pow(0.5) * -4 + 510;
    VImage colours = fromLeft.bandjoin(fromTop).bandjoin(fromLeft * -1 + 255).bandjoin(alpha);
    return colours.cast(VIPS_FORMAT_UCHAR)
        .copy(VImage::option()->set("interpretation", VIPS_INTERPRETATION_sRGB));
}

template <class Picture>
void write(const std::filesystem::path& file, Picture&& picture)
{
    startLibrary();
    try {
        picture().write_to_file(file.c_str());
    } catch (const vips::VError& error) {
        throw std::runtime_error(error.what());
    }
}

} // namespace

void writePhotograph(const std::filesystem::path& file, SampleSize size, int seed)
{
    write(file, [&] { return photograph(size, seed); });
}

void writeRotatedPhotograph(const std::filesystem::path& file, SampleSize size, int seed)
{
    write(file, [&] {
        VImage picture = photograph(size, seed).copy_memory();
        picture.set(VIPS_META_ORIENTATION, 6);
        return picture;
    });
}

void writeDisc(const std::filesystem::path& file, SampleSize size)
{
    write(file, [&] { return disc(size); });
}

void writeOneColour(const std::filesystem::path& file, SampleSize size)
{
    write(file, [&] {
        return VImage::black(size.width, size.height)
            .cast(VIPS_FORMAT_UCHAR)
            .copy(VImage::option()->set("interpretation", VIPS_INTERPRETATION_B_W));
    });
}

} // namespace lumora::samples
