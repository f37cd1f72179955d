// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "row_picture.h"

#include <vips/vips.h>

#include <new>
#include <utility>

namespace lumora {
namespace {

struct Rows
{
    std::unique_ptr<RowSource> source;
    int next = 0;

    Status copyTo(VipsRegion* region)
    {
        const VipsRect& area = region->valid;
        if (area.left != 0 || area.width != region->im->Xsize || area.top != next)
            return Error{"rows out of order"};
        std::uint8_t* row = region->data;
        for (int y = 0; y < area.height; ++y, row += region->bpl, ++next) {
            if (auto status = source->next(row); !status) return status;
        }
        return Done{};
    }
};

int generate(VipsRegion* region, void*, void* rows, void*, gboolean*)
try {
    const auto status = static_cast<Rows*>(rows)->copyTo(region);
    if (!status) vips_error("rows", "%s", status.error().description.c_str());
    return status ? 0 : -1;
} catch (const std::bad_alloc&) {
    vips_error("rows", "not enough memory");
    return -1;
}

} // namespace

Result<VipsImagePtr> rowPicture(VipsImagePtr form, std::unique_ptr<RowSource> source)
{
    constexpr int rowsAtOnce = 16;
    auto* const rows = new Rows{std::move(source)};
    g_object_set_data_full(G_OBJECT(form.get()), "lumora-rows", rows,
                           [](gpointer owned) { delete static_cast<Rows*>(owned); });
    VipsImage* inOrder = nullptr;
    if (vips_image_generate(form.get(), nullptr, generate, nullptr, rows, nullptr) != 0 ||
        vips_sequential(form.get(), &inOrder, "tile_height", rowsAtOnce, nullptr) != 0)
        return takeVipsError();
    return VipsImagePtr(inOrder);
}

} // namespace lumora
