// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "compact_rows.h"

#include "pixels/interleaving.h"
#include "rgba_pixels.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace lumora {
namespace {

void layOverWhite(std::uint8_t* p, std::size_t pixels)
{
    for (std::size_t i = 0; i < pixels; ++i, p += 4) {
        const int white = 255 - p[3];
        for (int c = 0; c < 3; ++c)
            p[c] = static_cast<std::uint8_t>(std::min(255, p[c] + white));
        p[3] = 255;
    }
}

void pack(const std::vector<std::uint8_t>& rgba, CompactForm form, std::uint8_t* to)
{
    if (form.isOpaque && !form.isGray) return dropFourth(rgba.data(), std::ssize(rgba) / 4, to);
    const std::size_t colors = form.isGray ? 1 : 3;
    for (std::size_t at = 0; at < rgba.size(); at += 4) {
        for (std::size_t c = 0; c < colors; ++c)
            *to++ = rgba[at + c];
        if (!form.isOpaque) *to++ = rgba[at + 3];
    }
}

// From a form to one that has all of its components.
void widen(const std::vector<std::uint8_t>& from, CompactForm form, CompactForm wider, std::uint8_t* to)
{
    for (std::size_t at = 0; at < from.size(); at += form.bands()) {
        for (std::size_t c = 0; c < (wider.isGray ? 1U : 3U); ++c)
            *to++ = from[at + (form.isGray ? 0 : c)];
        if (!wider.isOpaque) *to++ = form.isOpaque ? 255 : from[at + form.bands() - 1];
    }
}

} // namespace

CompactRows::CompactRows(VipsImage* bitmap, BitmapAlpha alpha, bool mayBeGray)
    : m_alpha(alpha), m_height(vips_image_get_height(bitmap)),
      m_width(static_cast<std::size_t>(vips_image_get_width(bitmap))), m_form{mayBeGray, true}
{
}

Result<std::unique_ptr<CompactRows>> CompactRows::open(VipsImage* bitmap, BitmapAlpha alpha, bool mayBeGray)
{
    std::unique_ptr<CompactRows> rows(new CompactRows(bitmap, alpha, mayBeGray));
    if (auto status = rows->settle(bitmap); !status) return status.error();
    return rows;
}

bool CompactRows::isSettled() const
{
    return !m_form.isGray && (m_alpha != BitmapAlpha::kept || !m_form.isOpaque);
}

Status CompactRows::settle(VipsImage* bitmap)
{
    const RegionPtr region = regionForEachRowOnce(bitmap);
    for (int top = 0; top < m_height && !isSettled(); top += streamedRows) {
        const int count = std::min(streamedRows, m_height - top);
        const auto rows = rowsOf(region.get(), top, count);
        if (!rows) return rows.error();
        loadStraight(*rows, count);
        const CompactForm form = formOfLoaded();
        m_form = {m_form.isGray && form.isGray, m_form.isOpaque && form.isOpaque};
        Strip& strip = m_read.emplace_back(Strip{form, {}});
        strip.bytes.resize(m_rgba.size() / 4 * form.bands());
        pack(m_rgba, form, strip.bytes.data());
    }
    return Done{};
}

void CompactRows::loadStraight(const RowSpan& rows, int count)
{
    m_rgba.resize(m_width * static_cast<std::size_t>(count) * 4);
    for (int y = 0; y < count; ++y)
        std::memcpy(m_rgba.data() + static_cast<std::size_t>(y) * m_width * 4, rows.first + y * rows.stride,
                    m_width * 4);
    if (m_alpha == BitmapAlpha::kept) unpremultiply(m_rgba.data(), m_rgba.size() / 4, 4);
    if (m_alpha == BitmapAlpha::overWhite) layOverWhite(m_rgba.data(), m_rgba.size() / 4);
}

CompactForm CompactRows::formOfLoaded() const
{
    CompactForm form{m_form.isGray, true};
    for (std::size_t at = 0; at < m_rgba.size() && (form.isGray || form.isOpaque); at += 4) {
        const std::uint8_t* const p = m_rgba.data() + at;
        form.isOpaque = form.isOpaque && p[3] == 255;
        form.isGray = form.isGray && p[0] == p[1] && p[1] == p[2];
    }
    return form;
}

StreamForm CompactRows::form() const
{
    return {static_cast<int>(m_width),
            m_height,
            static_cast<int>(m_form.bands()),
            VIPS_FORMAT_UCHAR,
            VIPS_CODING_NONE,
            m_form.isGray ? VIPS_INTERPRETATION_B_W : VIPS_INTERPRETATION_sRGB};
}

Status CompactRows::make(const RowProvider& source, int first, int count, std::uint8_t* rows)
{
    const auto index = static_cast<std::size_t>(first / streamedRows);
    if (index < m_read.size()) {
        const Strip strip = std::exchange(m_read[index], {});
        widen(strip.bytes, strip.form, m_form, rows);
        return Done{};
    }
    const auto from = source(first, count);
    if (!from) return from.error();
    if (m_alpha == BitmapAlpha::opaque && !m_form.isGray) {
        for (int y = 0; y < count; ++y, rows += 3 * m_width)
            dropFourth(from->first + y * from->stride, static_cast<std::ptrdiff_t>(m_width), rows);
        return Done{};
    }
    loadStraight(*from, count);
    pack(m_rgba, m_form, rows);
    return Done{};
}

} // namespace lumora
