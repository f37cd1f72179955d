// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/decoding.h"

#include "pixels/row_reading.h"
#include "pixels/row_stream.h"
#include "pixels/stored_form.h"
#include "rgba_pixels.h"
#include "turned_rows.h"

#include <vips/vips.h>

#include <utility>

namespace lumora {
namespace {

// All rows in memory.
Result<VipsImagePtr> heldPicture(VipsImage* rows)
{
    const std::size_t rowBytes = rowBytesOf(rows);
    const StreamForm form = streamFormOf(rows);
    const std::size_t bytes = rowBytes * static_cast<std::size_t>(form.height);
    PageBytes pixels = allocatePages(bytes);
    const auto status = readRows(rows, [&](int first, int count, const RowSpan& strip) -> Status {
        copyRows(strip, count, rowBytes, pixels.get() + static_cast<std::size_t>(first) * rowBytes);
        return Done{};
    });
    if (!status) return status.error();
    const VipsImagePtr memory(vips_image_new_from_memory(
        pixels.get(), bytes, form.width, form.height, form.bands, static_cast<VipsBandFormat>(form.format)));
    if (!memory) return takeVipsError();
    g_object_set_data_full(G_OBJECT(memory.get()), "lumora-pixels", new PageBytes(std::move(pixels)),
                           [](gpointer owned) { delete static_cast<PageBytes*>(owned); });
    VipsImage* tagged = nullptr;
    if (vips_copy(memory.get(), &tagged, "interpretation", form.interpretation, "coding", form.coding,
                  nullptr) != 0)
        return takeVipsError();
    copyComponentFields(rows, tagged);
    return VipsImagePtr(tagged);
}

} // namespace

Result<Image> turned(const Image& image)
{
    ensureVipsReady();
    if (image.state() != ImageState::pending) return image;
    const auto outcome = image.outcomeToCome();
    auto upright = uprightPicture(image.pixels(), image.pendingOrientation(), outcome);
    if (!upright) return upright.error();
    return Image(upright->release(), 1, ImageState::pending).withOutcome(outcome);
}

Result<Image> decode(const Image& image)
{
    if (image.isInMemory()) return image;
    const auto rows = turned(image);
    if (!rows) return rows.error();
    auto held = heldPicture(rows->pixels());
    if (!held) return held.error();
    const bool isDrawing = image.state() == ImageState::drawing;
    return Image(held->release(), 1, isDrawing ? ImageState::drawn : ImageState::decoded)
        .withOutcome(rows->outcome());
}

Status readThrough(const Image& image)
{
    return readRows(image.pixels(), [](int, int, const RowSpan&) -> Status { return Done{}; });
}

} // namespace lumora
