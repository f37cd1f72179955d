// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "compact_rows.h"

#include "rgba_pixels.h"

#include <vips/vips.h>

#include <algorithm>
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

// From a bitmap's components, straight, to those of a form.
void pack(const std::vector<std::uint8_t>& bitmap, std::size_t bands, CompactForm form, std::uint8_t* to)
{
    const std::size_t colors = form.isGray ? 1 : 3;
    for (std::size_t at = 0; at < bitmap.size(); at += bands) {
        for (std::size_t c = 0; c < colors; ++c)
            *to++ = bitmap[at + c];
        if (!form.isOpaque) *to++ = bitmap[at + 3];
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

CompactRows::CompactRows(VipsImage* bitmap, bool keepsAlpha, bool mayBeGray)
    : m_bands(static_cast<std::size_t>(vips_image_get_bands(bitmap))),
      m_keepsAlpha(keepsAlpha && m_bands == 4), m_height(vips_image_get_height(bitmap)),
      m_width(static_cast<std::size_t>(vips_image_get_width(bitmap))), m_form{mayBeGray, true}
{
}

Result<std::unique_ptr<CompactRows>> CompactRows::open(VipsImage* bitmap, bool keepsAlpha, bool mayBeGray)
{
    std::unique_ptr<CompactRows> rows(new CompactRows(bitmap, keepsAlpha, mayBeGray));
    if (auto status = rows->settle(bitmap); !status) return status.error();
    return rows;
}

bool CompactRows::isSettled() const
{
    return !m_form.isGray && (!m_keepsAlpha || !m_form.isOpaque);
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
        strip.bytes.resize(m_strip.size() / m_bands * form.bands());
        pack(m_strip, m_bands, form, strip.bytes.data());
    }
    return Done{};
}

void CompactRows::loadStraight(const RowSpan& rows, int count)
{
    m_strip.resize(m_width * static_cast<std::size_t>(count) * m_bands);
    copyRows(rows, count, m_width * m_bands, m_strip.data());
    if (m_bands < 4) return;
    if (m_keepsAlpha) {
        unpremultiply(m_strip.data(), m_strip.size() / 4, 4);
    } else {
        layOverWhite(m_strip.data(), m_strip.size() / 4);
    }
}

CompactForm CompactRows::formOfLoaded() const
{
    CompactForm form{m_form.isGray, true};
    for (std::size_t at = 0; at < m_strip.size() && (form.isGray || form.isOpaque); at += m_bands) {
        const std::uint8_t* const p = m_strip.data() + at;
        form.isOpaque = form.isOpaque && (m_bands < 4 || p[3] == 255);
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
    if (m_bands == m_form.bands() && m_form.isOpaque) {
        copyRows(*from, count, m_width * m_bands, rows);
    } else {
        loadStraight(*from, count);
        pack(m_strip, m_bands, m_form, rows);
    }
    return Done{};
}

} // namespace lumora
