// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_loader.h"

#include "bmp/bmp_codec.h"
#include "formats/format.h"
#include "system/regular_file.h"

#include <vips/vips.h>

#include <cstring>
#include <memory>
#include <mutex>
#include <new>
#include <vector>

namespace lumora {
namespace {

// 32 bits a pixel, and room for headers and a profile.
constexpr std::size_t largestFile = std::size_t{maximumDecodedPixels} * 4 + (std::size_t{1} << 26U);

struct LazyBmp
{
    std::vector<std::byte> file;
    BmpRows rows; // looks into `file`
    std::vector<std::byte> row;
    std::mutex mutex; // the library may ask for two strips at once

    Status copyTo(VipsRegion* region)
    {
        const std::scoped_lock lock(mutex);
        const VipsRect& area = region->valid;
        const auto channels = static_cast<std::size_t>(rows.header().channels());
        for (int y = area.top; y < area.top + area.height; ++y) {
            if (auto status = rows.read(y, row); !status) return status;
            std::memcpy(region->data + std::ptrdiff_t{y - area.top} * region->bpl,
                        row.data() + static_cast<std::size_t>(area.left) * channels,
                        static_cast<std::size_t>(area.width) * channels);
        }
        return Done{};
    }
};

int generate(VipsRegion* region, void*, void* bmp, void*, gboolean*)
try {
    const auto status = static_cast<LazyBmp*>(bmp)->copyTo(region);
    if (!status) vips_error("bmp", "%s", status.error().description.c_str());
    return status ? 0 : -1;
} catch (const std::bad_alloc&) {
    vips_error("bmp", "not enough memory");
    return -1;
}

void destroy(gpointer bmp)
{
    delete static_cast<LazyBmp*>(bmp);
}

} // namespace

Result<VipsImagePtr> loadBmp(int descriptor)
{
    auto file = readAll(descriptor, largestFile);
    if (!file) return file.error();
    auto rows = BmpRows::open(*file);
    if (!rows) return rows.error();
    const BmpHeader header = rows->header();
    std::vector<std::byte> row(rows->rowBytes());

    VipsImagePtr image(vips_image_new());
    auto* const bmp = new LazyBmp{std::move(*file), std::move(*rows), std::move(row), {}};
    g_object_set_data_full(G_OBJECT(image.get()), "lumora-bmp", bmp, destroy);
    vips_image_init_fields(image.get(), static_cast<int>(header.width), static_cast<int>(header.height),
                           header.channels(), VIPS_FORMAT_UCHAR, VIPS_CODING_NONE, VIPS_INTERPRETATION_sRGB,
                           1, 1);
    if (!header.iccProfile.empty()) {
        vips_image_set_blob_copy(image.get(), VIPS_META_ICC_NAME, header.iccProfile.data(),
                                 header.iccProfile.size());
    }
    if (vips_image_pipelinev(image.get(), VIPS_DEMAND_STYLE_THINSTRIP, nullptr) != 0 ||
        vips_image_generate(image.get(), nullptr, generate, nullptr, bmp, nullptr) != 0)
        return takeVipsError();
    return image;
}

} // namespace lumora
