// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_loader.h"

#include "pixels/row_stream.h"
#include "row_picture.h"
#include "tiff/tiff_colors.h"
#include "tiff/tiff_components.h"
#include "tiff/tiff_pieces.h"
#include "types/format.h"
#include "vips_loading.h"

#include <vips/vips.h>

#include <fcntl.h>

#include <memory>
#include <utility>

namespace lumora {
namespace {

// Opened at the first row: until then the file costs nothing.
class LazyTiff : public RowSource
{
public:
    LazyTiff(FileDescriptor file, const TiffLayout& layout) : m_file(std::move(file)), m_layout(layout) {}

    Status next(std::uint8_t* row) override
    {
        if (!m_rows) {
            const auto open = m_layout.road == TiffRoad::colors ? openTiffColors : openTiffComponents;
            auto opened = open(m_file.get(), m_layout);
            if (!opened) return opened.error();
            m_rows = std::move(*opened);
        }
        return m_rows->read(row);
    }

private:
    FileDescriptor m_file;
    TiffLayout m_layout;
    std::unique_ptr<TiffRows> m_rows;
};

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

    const TiffForm form = tiffForm(*layout);
    auto made = newPicture({layout->width, layout->height, form.bands, formatOf(form.depth), VIPS_CODING_NONE,
                            interpretationOf(form)});
    if (!made) return made.error();
    VipsImagePtr image = std::move(*made);
    describe(*file, image.get());
    if (vips_image_pipelinev(image.get(), VIPS_DEMAND_STYLE_THINSTRIP, nullptr) != 0) return takeVipsError();
    return rowPicture(std::move(image), std::make_unique<LazyTiff>(std::move(copy), *layout));
}

} // namespace lumora
