// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/transparency.h"

#include "pixels/vips_library.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>

namespace lumora {
namespace {

using Region = std::unique_ptr<VipsRegion, VipsUnref>;

// The alpha is the last component of a pixel.
template <class Component>
bool hasTransparentPixel(const std::uint8_t* row, std::size_t width, std::size_t bands)
{
    constexpr Component opaque = std::numeric_limits<Component>::max();
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the library's bytes as components
    const std::span components(reinterpret_cast<const Component*>(row), width * bands);
    Component all = opaque;
    for (std::size_t i = bands - 1; i < components.size(); i += bands)
        all = static_cast<Component>(all & components[i]);
    return all != opaque;
}

} // namespace

bool hasTransparency(const Image& image)
{
    VipsImage* const pixels = image.pixels();
    const VipsBandFormat format = vips_image_get_format(pixels);
    if (!image.isInMemory() || !vips_image_hasalpha(pixels)) return false;
    if (format != VIPS_FORMAT_UCHAR && format != VIPS_FORMAT_USHORT) return false;
    const auto hasTransparent =
        format == VIPS_FORMAT_UCHAR ? hasTransparentPixel<std::uint8_t> : hasTransparentPixel<std::uint16_t>;
    const int width = vips_image_get_width(pixels);
    const auto bands = static_cast<std::size_t>(vips_image_get_bands(pixels));
    const Region region(vips_region_new(pixels));
    for (int y = 0; y < vips_image_get_height(pixels); ++y) {
        const VipsRect row{0, y, width, 1};
        if (vips_region_prepare(region.get(), &row) != 0) return false;
        const std::uint8_t* const first = region->data; // of the row that was asked for
        if (hasTransparent(first, static_cast<std::size_t>(width), bands)) return true;
    }
    return false;
}

} // namespace lumora
