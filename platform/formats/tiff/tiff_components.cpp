// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_components.h"

#include "tiff/tiff_palette.h"
#include "tiff/tiff_plane.h"
#include "tiff/tiff_samples.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>
#include <vector>

namespace lumora {
namespace {

// All planes of a picture, one row at a time.
class Samples
{
public:
    static Result<Samples> open(int descriptor, const TiffLayout& layout)
    {
        Samples samples(layout);
        for (int plane = 0; plane < (layout.isPlanar ? layout.samples : 1); ++plane) {
            auto rows = TiffPlane::open(descriptor, layout, plane);
            if (!rows) return rows.error();
            samples.m_planes.push_back(std::move(*rows));
        }
        return samples;
    }

    Status readRow()
    {
        m_rows.clear();
        for (TiffPlane& plane : m_planes) {
            const auto row = plane.row(m_y);
            if (!row) return row.error();
            const auto perPixel = static_cast<std::size_t>(m_layout.isPlanar ? 1 : m_layout.samples);
            const std::size_t bits =
                perPixel * static_cast<std::size_t>(m_layout.width) * static_cast<std::size_t>(m_layout.bits);
            if (row->size() < (bits + 7) / 8) return Error{"damaged TIFF"};
            m_rows.push_back(*row);
        }
        ++m_y;
        return Done{};
    }

    double at(int x, int sample) const
    {
        const auto column = static_cast<std::size_t>(x);
        const auto s = static_cast<std::size_t>(sample);
        if (m_layout.isPlanar) return tiffSample(m_rows[s], column, m_layout.sample, m_layout.bits);
        const std::size_t index = column * static_cast<std::size_t>(m_layout.samples) + s;
        return tiffSample(m_rows[0], index, m_layout.sample, m_layout.bits);
    }

    std::span<const std::uint8_t> packedRow() const { return m_rows[0]; }
    const TiffLayout& layout() const { return m_layout; }

private:
    explicit Samples(const TiffLayout& layout) : m_layout(layout) {}

    TiffLayout m_layout;
    std::vector<TiffPlane> m_planes;
    std::vector<std::span<const std::uint8_t>> m_rows;
    int m_y = 0;
};

std::optional<SampleRange> declaredRange(const TiffFile& file, const TiffLayout& layout)
{
    SampleRange range = wholeRange(layout.sample, layout.bits);
    const bool hasBlack = TIFFGetField(file.get(), TIFFTAG_SMINSAMPLEVALUE, &range.black) == 1;
    const bool hasWhite = TIFFGetField(file.get(), TIFFTAG_SMAXSAMPLEVALUE, &range.white) == 1;
    const bool isRange =
        std::isfinite(range.black) && std::isfinite(range.white) && range.black < range.white;
    if ((!hasBlack && !hasWhite) || !isRange) return std::nullopt;
    return range;
}

// Of the colours; what is no number counts for nothing.
Result<SampleRange> extremes(int descriptor, const TiffLayout& layout)
{
    auto samples = Samples::open(descriptor, layout);
    if (!samples) return samples.error();
    SampleRange range;
    for (int y = 0; y < layout.height; ++y) {
        if (auto status = samples->readRow(); !status) return status.error();
        for (int x = 0; x < layout.width; ++x) {
            for (int color = 0; color < layout.colors; ++color) {
                const double value = samples->at(x, color);
                if (!std::isfinite(value)) continue;
                range.black = std::min(range.black, value);
                range.white = std::max(range.white, value);
            }
        }
    }
    return range;
}

Result<SampleRange> rangeOf(int descriptor, const TiffLayout& layout)
{
    const bool isPlain = layout.sample == TiffSample::natural && layout.bits <= 16;
    if (!isPlain) {
        const auto file = TiffFile::open(descriptor);
        if (!file) return file.error();
        if (const auto declared = declaredRange(*file, layout)) return *declared;
    }
    if (layout.sample == TiffSample::real) return extremes(descriptor, layout);
    return wholeRange(layout.sample, layout.bits);
}

void store(double value, TiffDepth depth, std::uint8_t*& to)
{
    if (depth == TiffDepth::eight) {
        *to++ = static_cast<std::uint8_t>(std::lround(value * 255));
    } else if (depth == TiffDepth::sixteen) {
        const auto component = static_cast<std::uint16_t>(std::lround(value * 65535));
        std::memcpy(to, &component, sizeof component);
        to += sizeof component;
    } else {
        const auto component = static_cast<float>(value);
        std::memcpy(to, &component, sizeof component);
        to += sizeof component;
    }
}

class TiffComponents : public TiffRows
{
public:
    TiffComponents(Samples samples, const SampleRange& range, TiffPalette palette)
        : m_samples(std::move(samples)), m_range(range), m_palette(std::move(palette)),
          m_form(tiffForm(m_samples.layout()))
    {
    }

    Status read(std::uint8_t* row) override
    {
        if (auto status = m_samples.readRow(); !status) return status;
        const TiffLayout& layout = m_samples.layout();
        if (isAsWanted()) {
            const std::size_t bytes = static_cast<std::size_t>(layout.width) *
                                      static_cast<std::size_t>(layout.samples * layout.bits / 8);
            std::copy_n(m_samples.packedRow().begin(), bytes, row);
            return Done{};
        }
        for (int x = 0; x < layout.width; ++x)
            convert(x, row);
        return Done{};
    }

private:
    bool isAsWanted() const
    {
        const TiffLayout& layout = m_samples.layout();
        return layout.sample == TiffSample::natural && (layout.bits == 8 || layout.bits == 16) &&
               !layout.isPlanar && !layout.isInverted && !layout.isPremultiplied && !layout.hasPalette;
    }

    void convert(int x, std::uint8_t*& to) const
    {
        const TiffLayout& layout = m_samples.layout();
        if (layout.hasPalette) {
            for (const double component : m_palette.at(static_cast<std::size_t>(m_samples.at(x, 0))))
                store(component, m_form.depth, to);
        }
        const double opacity = layout.isPremultiplied ? extra(x, layout.colors) : 1;
        for (int color = layout.hasPalette ? 1 : 0; color < layout.colors; ++color)
            store(colorAt(x, color, opacity), m_form.depth, to);
        for (int sample = layout.colors; sample < layout.samples; ++sample)
            store(extra(x, sample), m_form.depth, to);
    }

    double colorAt(int x, int color, double opacity) const
    {
        if (opacity == 0) return 0;
        const double value = within(m_samples.at(x, color) / opacity, m_range);
        return m_samples.layout().isInverted ? 1 - value : value;
    }

    double extra(int x, int sample) const
    {
        const TiffLayout& layout = m_samples.layout();
        return within(m_samples.at(x, sample), wholeRange(layout.sample, layout.bits));
    }

    // From 0 to 1; 0 for what is no number.
    static double within(double value, const SampleRange& range)
    {
        const double share = (value - range.black) / (range.white - range.black);
        return share > 0 ? std::min(share, 1.0) : 0;
    }

    Samples m_samples;
    SampleRange m_range;
    TiffPalette m_palette;
    TiffForm m_form;
};

} // namespace

Result<std::unique_ptr<TiffRows>> openTiffComponents(int descriptor, const TiffLayout& layout)
{
    TiffPalette palette;
    if (layout.hasPalette) {
        const auto file = TiffFile::open(descriptor);
        if (!file) return file.error();
        palette = tiffPalette(*file, layout.bits);
        if (palette.empty()) return Error{"TIFF without its palette"};
    }
    const auto range = rangeOf(descriptor, layout);
    if (!range) return range.error();
    auto samples = Samples::open(descriptor, layout);
    if (!samples) return samples.error();
    return std::unique_ptr<TiffRows>(
        std::make_unique<TiffComponents>(std::move(*samples), *range, std::move(palette)));
}

} // namespace lumora
