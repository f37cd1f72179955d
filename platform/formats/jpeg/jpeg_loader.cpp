// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_loader.h"

#include "jpeg/jpeg_decoder.h"

#include <vips/vips.h>

#include <fcntl.h>

#include <memory>

namespace lumora {
namespace {

// A few rows of a decoder at a time; the image library asks for them in order and one strip after the other.
struct LazyJpeg
{
    JpegDecoder decoder;
    bool isStarted = false;

    Status copyTo(VipsRegion* region)
    {
        VipsImage* const image = region->im;
        const VipsRect& area = region->valid;
        if (!isStarted) {
            isStarted = true;
            auto status = decoder.start(vips_image_get_width(image), vips_image_get_height(image),
                                        vips_image_get_bands(image));
            if (!status) return status;
        }
        if (area.left != 0 || area.width != vips_image_get_width(image) || area.top != decoder.nextRow())
            return Error{"rows out of order"};
        std::uint8_t* row = region->data;
        for (int y = 0; y < area.height; ++y, row += region->bpl) {
            if (auto status = decoder.read(row); !status) return status;
        }
        return Done{};
    }
};

int generate(VipsRegion* region, void*, void* jpeg, void*, gboolean*)
{
    const auto status = static_cast<LazyJpeg*>(jpeg)->copyTo(region);
    if (!status) vips_error("jpeg", "%s", status.error().description.c_str());
    return status ? 0 : -1;
}

// Full size, kind, profile and metadata; no rows.
Result<VipsImagePtr> header(int descriptor)
{
    const std::unique_ptr<VipsSource, VipsUnref> source(vips_source_new_from_descriptor(descriptor));
    VipsImage* image = nullptr;
    if (!source || vips_jpegload_source(source.get(), &image, "access", VIPS_ACCESS_SEQUENTIAL, nullptr) != 0)
        return takeVipsError();
    return VipsImagePtr(image);
}

} // namespace

Result<VipsImagePtr> loadJpeg(int divisor, int descriptor)
{
    const auto described = header(descriptor);
    if (!described) return described.error();
    FileDescriptor file(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    if (!file.isOpen()) return Error{"no descriptor left"};

    const VipsImagePtr rows(vips_image_new());
    auto* const jpeg = new LazyJpeg{JpegDecoder(std::move(file), divisor)};
    g_object_set_data_full(G_OBJECT(rows.get()), "lumora-jpeg", jpeg,
                           [](gpointer owned) { delete static_cast<LazyJpeg*>(owned); });
    constexpr int rowsAtOnce = 16;
    VipsImage* inOrder = nullptr;
    if (vips_image_pipelinev(rows.get(), VIPS_DEMAND_STYLE_THINSTRIP, described->get(), nullptr) != 0)
        return takeVipsError();
    rows->Xsize = (rows->Xsize + divisor - 1) / divisor;
    rows->Ysize = (rows->Ysize + divisor - 1) / divisor;
    if (vips_image_generate(rows.get(), nullptr, generate, nullptr, jpeg, nullptr) != 0 ||
        vips_sequential(rows.get(), &inOrder, "tile_height", rowsAtOnce, nullptr) != 0)
        return takeVipsError();
    return VipsImagePtr(inOrder);
}

} // namespace lumora
