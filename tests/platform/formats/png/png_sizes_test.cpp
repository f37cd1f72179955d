// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Every small size in every kind of picture comes back exactly, by two readers that share no code.
#include "pixels/stored_form.h"
#include "png/png_encoder.h"
#include "tests/platform/formats/png/read_png.h"

#include <gtest/gtest.h>
#include <vips/vips.h>

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <ostream>
#include <string>

namespace lumora {
namespace {

using test::WideColors;

struct Kind
{
    const char* name;
    int bands;
    bool isDeep = false;
    unsigned colors = 0;  // so few of them, for a palette; 0 for any
    int grayBits = 8;     // stored in so many
    bool isStored = true; // not redrawn: keeps its model
    bool hasTransparentColor = false;

    friend std::ostream& operator<<(std::ostream& out, const Kind& kind) { return out << kind.name; }
};

unsigned noise(unsigned value)
{
    value = (value ^ value >> 15U) * 0x2C1B3C6DU;
    value = (value ^ value >> 12U) * 0x297A2D39U;
    return value ^ value >> 15U;
}

// Slopes, rows that repeat, and noise, so that every filter has its rows.
unsigned valueAt(unsigned x, unsigned y, unsigned band)
{
    if (y % 4 == 1) return x * 1500 + y * 900 + band * 7000;
    if (y % 4 == 2) return x * 1500 + (y - 1) * 900 + band * 7000;
    if (y % 4 == 3) return noise(x / 5 * 64 + band);
    return noise(x * 4096 + y * 8 + band);
}

unsigned componentAt(const Kind& kind, unsigned x, unsigned y, unsigned band)
{
    if (kind.hasTransparentColor && band + 1 == unsigned(kind.bands)) {
        Kind opaque = kind;
        opaque.hasTransparentColor = false;
        for (unsigned i = 0; i < band; ++i) {
            if (componentAt(opaque, x, y, i) != componentAt(opaque, 0, 0, i))
                return kind.isDeep ? 65535 : 255;
        }
        return 0;
    }
    if (kind.colors != 0) {
        const unsigned color = valueAt(x, y, 0) / 64 % kind.colors;
        return noise(color * 4 + band) % 256;
    }
    const unsigned value = valueAt(x, y, band) % 65536;
    if (kind.isDeep) return value;
    const unsigned levels = (1U << static_cast<unsigned>(kind.grayBits)) - 1;
    return (value >> 8U) % (levels + 1) * (255 / levels);
}

struct Vips
{
    void operator()(VipsImage* image) const { g_object_unref(image); }
};
using Picture = std::unique_ptr<VipsImage, Vips>;

// As the writer gets it.
Picture pictureOf(const Kind& kind, int width, int height)
{
    std::vector<std::uint16_t> components;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            for (int band = 0; band < kind.bands; ++band)
                components.push_back(
                    static_cast<std::uint16_t>(componentAt(kind, unsigned(x), unsigned(y), unsigned(band))));
        }
    }
    const std::vector<std::uint8_t> bytes(components.begin(), components.end());
    const void* const data = kind.isDeep ? static_cast<const void*>(components.data()) : bytes.data();
    Picture picture(vips_image_new_from_memory_copy(data, kind.isDeep ? bytes.size() * 2 : bytes.size(),
                                                    width, height, kind.bands,
                                                    kind.isDeep ? VIPS_FORMAT_USHORT : VIPS_FORMAT_UCHAR));
    if (kind.grayBits < 8) noteGrayBits(picture.get(), kind.grayBits);
    if (kind.hasTransparentColor) noteTransparentColor(picture.get());
    return picture;
}

WideColors colorsOf(VipsImage* picture)
{
    std::size_t size = 0;
    const std::unique_ptr<void, void (*)(void*)> memory(vips_image_write_to_memory(picture, &size), g_free);
    const auto bands = static_cast<unsigned>(vips_image_get_bands(picture));
    const bool isDeep = vips_image_get_format(picture) == VIPS_FORMAT_USHORT;
    const auto component = [&](std::size_t i) {
        if (!isDeep) return static_cast<const std::uint8_t*>(memory.get())[i] * 257U;
        return unsigned{static_cast<const std::uint16_t*>(memory.get())[i]};
    };
    WideColors colors;
    for (std::size_t i = 0; i < size / (isDeep ? 2 : 1); i += bands) {
        const bool isGray = bands <= 2;
        colors.push_back({component(i), component(isGray ? i : i + 1), component(isGray ? i : i + 2),
                          bands % 2 == 0 ? component(i + bands - 1) : 65535});
    }
    return colors;
}

std::string encoded(const Kind& kind, VipsImage* picture)
{
    const int descriptor = memfd_create("png", MFD_CLOEXEC);
    OutputFile file(FileDescriptor(descriptor), "out.png");
    const auto status = encodePng({picture, 100, kind.isStored, {}, {}}, file);
    EXPECT_TRUE(status) << status.error().description;
    std::string bytes(static_cast<std::size_t>(lseek(descriptor, 0, SEEK_END)), '\0');
    EXPECT_EQ(pread(descriptor, bytes.data(), bytes.size(), 0), ssize_t(bytes.size()));
    return bytes;
}

class PngSizes : public testing::TestWithParam<Kind>
{
};

TEST_P(PngSizes, ComeBackExactly)
{
    constexpr int largest = 40;
    for (int width = 1; width <= largest; ++width) {
        for (int height = 1; height <= largest; ++height) {
            const Picture picture = pictureOf(GetParam(), width, height);
            const WideColors colors = colorsOf(picture.get());
            const std::string file = encoded(GetParam(), picture.get());
            ASSERT_TRUE(test::PngReader(file).read() == colors) << width << " x " << height;
            const Picture back(vips_image_new_from_buffer(file.data(), file.size(), "", nullptr));
            ASSERT_TRUE(back) << width << " x " << height;
            ASSERT_TRUE(colorsOf(back.get()) == colors) << width << " x " << height;
        }
    }
}

// Each beyond what is tried out, and some beyond a piece of the stream.
TEST_P(PngSizes, ComeBackExactlyWhenLarge)
{
    const Picture picture = pictureOf(GetParam(), 1001, 701);
    const WideColors colors = colorsOf(picture.get());
    const std::string file = encoded(GetParam(), picture.get());
    EXPECT_TRUE(test::PngReader(file).read() == colors);
    const Picture back(vips_image_new_from_buffer(file.data(), file.size(), "", nullptr));
    ASSERT_TRUE(back);
    EXPECT_TRUE(colorsOf(back.get()) == colors);
}

INSTANTIATE_TEST_SUITE_P(
    , PngSizes,
    testing::Values(Kind{"Gray", 1}, Kind{"GrayAlpha", 2}, Kind{"Rgb", 3}, Kind{"Rgba", 4},
                    Kind{"DeepGray", 1, true}, Kind{"DeepGrayAlpha", 2, true}, Kind{"DeepRgb", 3, true},
                    Kind{"DeepRgba", 4, true}, Kind{"OneBitGray", 1, false, 0, 1},
                    Kind{"TwoBitGray", 1, false, 0, 2}, Kind{"FourBitGray", 1, false, 0, 4},
                    Kind{"TwoColors", 3, false, 2, 8, false}, Kind{"FourColors", 3, false, 4, 8, false},
                    Kind{"SixteenColors", 3, false, 16, 8, false},
                    Kind{"ManyColors", 3, false, 250, 8, false},
                    Kind{"ColorsWithAlpha", 4, false, 90, 8, false},
                    Kind{"TwoBitGrayAndATransparent", 2, false, 0, 2, true, true},
                    Kind{"DeepGrayAndATransparent", 2, true, 0, 8, true, true},
                    Kind{"RgbAndATransparent", 4, false, 0, 8, true, true}),
    [](const auto& kind) { return kind.param.name; });

} // namespace
} // namespace lumora
