// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/row_stream.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstring>
#include <mutex>
#include <new>
#include <utility>
#include <vector>

namespace lumora {
namespace {

// Hands on the rows; those that were made last are kept where the library takes other parts of them.
class Stream
{
public:
    Stream(std::unique_ptr<RowMaker> maker, std::shared_ptr<ReadOutcome> outcome, std::size_t rowBytes,
           int height)
        : m_maker(std::move(maker)), m_outcome(std::move(outcome)), m_rowBytes(rowBytes), m_height(height)
    {
    }

    Status fill(VipsRegion* target, VipsRegion* source)
    {
        const std::scoped_lock lock(m_mutex);
        if (isNextStrip(target)) return makeInto(target, source);
        const VipsRect& area = target->valid;
        const std::size_t pixelBytes = pixelBytesOf(target->im);
        for (int y = area.top; y < area.top + area.height; ++y) {
            if (auto status = reach(y, source); !status) return status;
            const std::uint8_t* row = m_rows.data() + static_cast<std::size_t>(y - m_first) * m_rowBytes;
            std::memcpy(target->data + std::ptrdiff_t{y - area.top} * target->bpl,
                        row + static_cast<std::size_t>(area.left) * pixelBytes,
                        static_cast<std::size_t>(area.width) * pixelBytes);
        }
        return Done{};
    }

    ReadOutcome& outcome() { return *m_outcome; }

private:
    // As many whole rows as are made at once, for one that asks for nothing again.
    bool isNextStrip(VipsRegion* region) const
    {
        return isForEachRowOnce(region) && !m_isBroken && region->valid.top == m_next &&
               region->valid.height == nextCount() &&
               static_cast<std::size_t>(region->valid.width) * pixelBytesOf(region->im) == m_rowBytes &&
               static_cast<std::size_t>(region->bpl) == m_rowBytes;
    }

    // Without a copy: nothing of them is kept.
    Status makeInto(VipsRegion* region, VipsRegion* source)
    {
        auto status = makeNext(source, region->data);
        m_first = m_next;
        return status;
    }

    Status reach(int y, VipsRegion* source)
    {
        if (m_isBroken) return Error{"rows behind damaged ones"};
        if (y < m_first) return Error{"rows were asked for twice"};
        while (y >= m_next) {
            m_rows.resize(m_rowBytes * streamedRows);
            m_first = m_next;
            if (auto status = makeNext(source, m_rows.data()); !status) return status;
        }
        return Done{};
    }

    Status makeNext(VipsRegion* source, std::uint8_t* rows)
    {
        const RowProvider provider = [source](int first, int count) { return rowsOf(source, first, count); };
        const int count = nextCount();
        m_isBroken = true;
        if (auto status = m_maker->make(provider, m_next, count, rows); !status) return status;
        m_next += count;
        m_isBroken = false;
        if (m_next == m_height) m_outcome->complete();
        return Done{};
    }

    int nextCount() const { return std::min(streamedRows, m_height - m_next); }

    std::mutex m_mutex;
    std::unique_ptr<RowMaker> m_maker;
    std::shared_ptr<ReadOutcome> m_outcome;
    std::size_t m_rowBytes;
    int m_height;
    std::vector<std::uint8_t> m_rows;
    int m_first = 0;
    int m_next = 0;
    bool m_isBroken = false; // a decoder that has met damage may go on with whatever comes
};

void* startRegion(VipsImage*, void* source, void*)
{
    return regionForEachRowOnce(static_cast<VipsImage*>(source)).release();
}

// A region may be used by the thread alone that made it, so the library makes one of the source for every
// thread.
int generate(VipsRegion* target, void* source, void*, void* stream, gboolean*)
{
    auto& made = *static_cast<Stream*>(stream);
    try {
        const auto status = made.fill(target, static_cast<VipsRegion*>(source));
        if (status) return 0;
        vips_error("rows", "%s", status.error().description.c_str());
        made.outcome().fail(status.error());
    } catch (const std::bad_alloc&) {
        vips_error("rows", "not enough memory");
        made.outcome().failForMemory();
    }
    return -1;
}

} // namespace

StreamForm streamFormOf(VipsImage* image)
{
    return {vips_image_get_width(image),  vips_image_get_height(image), vips_image_get_bands(image),
            vips_image_get_format(image), vips_image_get_coding(image), vips_image_get_interpretation(image)};
}

Result<VipsImagePtr> newPicture(const StreamForm& form)
{
    if (std::max(form.width, form.height) > VIPS_MAX_COORD) return Error{"a picture with too long an edge"};
    VipsImagePtr image(vips_image_new());
    vips_image_init_fields(image.get(), form.width, form.height, form.bands,
                           static_cast<VipsBandFormat>(form.format), static_cast<VipsCoding>(form.coding),
                           static_cast<VipsInterpretation>(form.interpretation), 1, 1);
    return image;
}

Status streamInto(VipsImage* picture, VipsImage* source, std::unique_ptr<RowMaker> maker,
                  std::shared_ptr<ReadOutcome> outcome)
{
    auto* const stream =
        new Stream(std::move(maker), std::move(outcome), rowBytesOf(picture), vips_image_get_height(picture));
    g_object_set_data_full(G_OBJECT(picture), "lumora-stream", stream,
                           [](gpointer owned) { delete static_cast<Stream*>(owned); });
    const int status =
        source ? vips_image_generate(picture, startRegion, generate, vips_stop_one, source, stream)
               : vips_image_generate(picture, nullptr, generate, nullptr, nullptr, stream);
    return status == 0 ? Status(Done{}) : takeVipsError();
}

Result<VipsImagePtr> streamedPicture(VipsImage* source, const StreamForm& form,
                                     std::unique_ptr<RowMaker> maker, std::shared_ptr<ReadOutcome> outcome)
{
    auto made = newPicture(form);
    if (!made) return made.error();
    VipsImagePtr image = std::move(*made);
    g_object_ref(source);
    g_object_set_data_full(G_OBJECT(image.get()), "lumora-source", source, g_object_unref);
    // Thin strips: whole rows, in order.
    if (vips_image_pipelinev(image.get(), VIPS_DEMAND_STYLE_THINSTRIP, nullptr) != 0) return takeVipsError();
    if (auto status = streamInto(image.get(), source, std::move(maker), std::move(outcome)); !status)
        return status.error();
    return image;
}

} // namespace lumora
