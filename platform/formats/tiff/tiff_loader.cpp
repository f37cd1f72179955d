// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_loader.h"

#include "formats/format.h"
#include "tiff/tiff_colors.h"
#include "tiff/tiff_components.h"
#include "tiff/tiff_pieces.h"
#include "vips_loading.h"

#include <vips/vips.h>

#include <fcntl.h>

#include <new>

namespace lumora {
namespace {

// Opened at the first row: until then the file costs nothing.
struct LazyTiff
{
    FileDescriptor file;
    TiffLayout layout;
    std::unique_ptr<TiffRows> rows;
    int nextRow = 0;

    Status copyTo(VipsRegion* region)
    {
        if (!rows) {
            const auto open = layout.road == TiffRoad::colors ? openTiffColors : openTiffComponents;
            auto opened = open(file.get(), layout);
            if (!opened) return opened.error();
            rows = std::move(*opened);
        }
        const VipsRect& area = region->valid;
        if (area.left != 0 || area.width != layout.width || area.top != nextRow)
            return Error{"rows out of order"};
        std::uint8_t* row = region->data;
        for (int y = 0; y < area.height; ++y, row += region->bpl, ++nextRow) {
            if (auto status = rows->read(row); !status) return status;
        }
        return Done{};
    }
};

int generate(VipsRegion* region, void*, void* tiff, void*, gboolean*)
try {
    const auto status = static_cast<LazyTiff*>(tiff)->copyTo(region);
    if (!status) vips_error("tiff", "%s", status.error().description.c_str());
    return status ? 0 : -1;
} catch (const std::bad_alloc&) {
    vips_error("tiff", "not enough memory");
    return -1;
}

VipsBandFormat formatOf(TiffDepth depth)
{
    if (depth == TiffDepth::eight) return VIPS_FORMAT_UCHAR;
    return depth == TiffDepth::sixteen ? VIPS_FORMAT_USHORT : VIPS_FORMAT_FLOAT;
}

VipsInterpretation interpretationOf(const TiffForm& form)
{
    const bool isSixteen = form.depth == TiffDepth::sixteen;
    if (form.colors == 4) return VIPS_INTERPRETATION_CMYK;
    if (form.colors == 3) return isSixteen ? VIPS_INTERPRETATION_RGB16 : VIPS_INTERPRETATION_sRGB;
    return isSixteen ? VIPS_INTERPRETATION_GREY16 : VIPS_INTERPRETATION_B_W;
}

void describe(const TiffFile& file, VipsImage* image)
{
    constexpr int lastOrientation = 8;
    const int orientation = file.number(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT);
    if (orientation >= 1 && orientation <= lastOrientation)
        vips_image_set_int(image, VIPS_META_ORIENTATION, orientation);
    std::uint32_t size = 0;
    void* profile = nullptr;
    if (TIFFGetField(file.get(), TIFFTAG_ICCPROFILE, &size, &profile) == 1 && size > 0)
        vips_image_set_blob_copy(image, VIPS_META_ICC_NAME, profile, size);
}

// Before anything is set aside for a row.
bool isTooLarge(const TiffFile& file)
{
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    TIFFGetField(file.get(), TIFFTAG_IMAGEWIDTH, &width);
    TIFFGetField(file.get(), TIFFTAG_IMAGELENGTH, &height);
    return std::uint64_t{width} * height > std::uint64_t{maximumDecodedPixels};
}

} // namespace

Result<VipsImagePtr> loadTiff(int descriptor)
{
    const auto file = TiffFile::open(descriptor);
    if (!file) return file.error();
    if (isTooLarge(*file)) return Error{"too many pixels"};
    if (!hasAllPieces(*file)) return Error{"a picture with missing pieces"};
    const auto layout = tiffLayout(*file);
    if (!layout) return Error{"unreadable kind of TIFF"};
    if (layout->road == TiffRoad::library) return loadStrictly(vips_tiffload_source, descriptor);
    FileDescriptor copy(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    if (!copy.isOpen()) return Error{"no descriptor left"};

    const VipsImagePtr rows(vips_image_new());
    auto* const tiff = new LazyTiff{std::move(copy), *layout, nullptr};
    g_object_set_data_full(G_OBJECT(rows.get()), "lumora-tiff", tiff,
                           [](gpointer owned) { delete static_cast<LazyTiff*>(owned); });
    const TiffForm form = tiffForm(*layout);
    vips_image_init_fields(rows.get(), layout->width, layout->height, form.bands, formatOf(form.depth),
                           VIPS_CODING_NONE, interpretationOf(form), 1, 1);
    describe(*file, rows.get());
    constexpr int rowsAtOnce = 16;
    VipsImage* inOrder = nullptr;
    if (vips_image_pipelinev(rows.get(), VIPS_DEMAND_STYLE_THINSTRIP, nullptr) != 0 ||
        vips_image_generate(rows.get(), nullptr, generate, nullptr, tiff, nullptr) != 0 ||
        vips_sequential(rows.get(), &inOrder, "tile_height", rowsAtOnce, nullptr) != 0)
        return takeVipsError();
    return VipsImagePtr(inOrder);
}

} // namespace lumora
