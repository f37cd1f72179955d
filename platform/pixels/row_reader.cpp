// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/row_reader.h"

#include "vips_operation.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstring>

namespace lumora {
namespace {

constexpr const char* eachRowOnce = "lumora-each-row-once";

// Rows fetched from the decoder at once; a multiple of every codec's block height.
constexpr int stripHeight = 64;

Result<VipsImagePtr> inKnownModel(VipsImagePtr image)
{
    const VipsBandFormat format = vips_image_get_format(image.get());
    const bool isScaled =
        format == VIPS_FORMAT_UCHAR || format == VIPS_FORMAT_USHORT || format == VIPS_FORMAT_FLOAT;
    if (colorModelOf(image.get()) && isScaled) return image;
    return applied(image, [](VipsImage* in, VipsImage** out) {
        return vips_colourspace(in, out, VIPS_INTERPRETATION_sRGB, nullptr);
    });
}

// From 0 to 1; a cast cuts off what is behind the point.
Result<VipsImagePtr> roundedToBytes(const VipsImagePtr& image)
{
    auto scaled = applied(
        image, [](VipsImage* in, VipsImage** out) { return vips_linear1(in, out, 255.0, 0.5, nullptr); });
    if (!scaled) return scaled;
    return applied(*scaled, [](VipsImage* in, VipsImage** out) {
        return vips_cast(in, out, VIPS_FORMAT_UCHAR, nullptr);
    });
}

// Shifting is the exact inverse of the widening that made most 16-bit files.
Result<VipsImagePtr> inEightBits(VipsImagePtr image)
{
    if (vips_image_get_format(image.get()) == VIPS_FORMAT_UCHAR) return image;
    if (vips_image_get_format(image.get()) == VIPS_FORMAT_FLOAT) return roundedToBytes(image);
    const bool isDeep = vips_image_get_format(image.get()) == VIPS_FORMAT_USHORT;
    return applied(image, [isDeep](VipsImage* in, VipsImage** out) {
        return vips_cast(in, out, VIPS_FORMAT_UCHAR, "shift", isDeep, nullptr);
    });
}

Result<VipsImagePtr> withBands(VipsImagePtr image, int bands)
{
    if (vips_image_get_bands(image.get()) == bands) return image;
    return applied(image, [bands](VipsImage* in, VipsImage** out) {
        return vips_extract_band(in, out, 0, "n", bands, nullptr);
    });
}

} // namespace

std::optional<ColorModel> colorModelOf(const VipsImage* image)
{
    switch (vips_image_guess_interpretation(image)) {
    case VIPS_INTERPRETATION_B_W:
    case VIPS_INTERPRETATION_GREY16:
        return ColorModel::gray;
    case VIPS_INTERPRETATION_sRGB:
    case VIPS_INTERPRETATION_RGB:
    case VIPS_INTERPRETATION_RGB16:
        return ColorModel::rgb;
    case VIPS_INTERPRETATION_CMYK:
        return ColorModel::cmyk;
    default:
        return std::nullopt;
    }
}

void copyRows(const RowSpan& rows, int count, std::size_t rowBytes, std::uint8_t* to)
{
    if (static_cast<std::size_t>(rows.stride) == rowBytes) {
        std::memcpy(to, rows.first, rowBytes * static_cast<std::size_t>(count));
        return;
    }
    for (int y = 0; y < count; ++y, to += rowBytes)
        std::memcpy(to, rows.first + y * rows.stride, rowBytes);
}

RowReader::RowReader(VipsImagePtr image, RowFormat format, bool keepsProfileSpace)
    : m_image(std::move(image)), m_region(regionForEachRowOnce(m_image.get())), m_format(format),
      m_keepsProfileSpace(keepsProfileSpace)
{
}

Result<RowReader> RowReader::open(const Image& image)
{
    ensureVipsReady();
    auto known = inKnownModel(newReference(image.pixels()));
    if (!known) return known.error();
    const bool keepsProfileSpace = known->get() == image.pixels();

    const ColorModel model = colorModelOf(known->get()).value_or(ColorModel::rgb);
    RowFormat format{model, false};
    // Extra bands beyond one alpha carry no picture; neither does the alpha of an ink separation.
    const int bands = vips_image_get_bands(known->get());
    if (bands < format.bands()) return Error{"unexpected number of components"};
    format.hasAlpha = model != ColorModel::cmyk && bands > format.bands();

    auto narrow = withBands(std::move(*known), format.bands());
    if (!narrow) return narrow.error();
    auto eightBit = inEightBits(std::move(*narrow));
    if (!eightBit) return eightBit.error();
    return RowReader(std::move(*eightBit), format, keepsProfileSpace);
}

int RowReader::width() const
{
    return vips_image_get_width(m_image.get());
}

int RowReader::height() const
{
    return vips_image_get_height(m_image.get());
}

Result<RowSpan> RowReader::rows(int first, int count)
{
    return rowsOf(m_region.get(), first, count);
}

Status RowReader::read(int first, int count, std::uint8_t* rows)
{
    const auto rowBytes = static_cast<std::size_t>(width()) * static_cast<std::size_t>(m_format.bands());
    for (int top = first; top < first + count; top += stripHeight) {
        const int height = std::min(stripHeight, first + count - top);
        const auto strip = this->rows(top, height);
        if (!strip) return strip.error();
        copyRows(*strip, height, rowBytes, rows);
        rows += rowBytes * static_cast<std::size_t>(height);
    }
    return Done{};
}

RegionPtr regionForEachRowOnce(VipsImage* image)
{
    RegionPtr region(vips_region_new(image));
    if (region) g_object_set_data(G_OBJECT(region.get()), eachRowOnce, region.get());
    return region;
}

bool isForEachRowOnce(VipsRegion* region)
{
    return g_object_get_data(G_OBJECT(region), eachRowOnce) != nullptr;
}

Result<RowSpan> rowsOf(VipsRegion* region, int first, int count)
{
    const VipsRect strip{0, first, region->im->Xsize, count};
    if (vips_region_prepare(region, &strip) != 0) return takeVipsError();
    const std::ptrdiff_t stride = region->bpl;
    return RowSpan{region->data + (first - region->valid.top) * stride, stride};
}

} // namespace lumora
