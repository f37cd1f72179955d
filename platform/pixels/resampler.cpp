// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "resampler.h"

#include "planes.h"
#include "zimg_graph.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace lumora {
namespace {

constexpr double kernelRadius = 3.0;
// Source rows narrowed at once: those of one strip, as they may be read ahead.
constexpr int stripHeight = streamedRows;
// Output rows a band: enough that computing the band's kernel costs nothing beside running it.
constexpr int bandHeight = streamedRows;

// The source rows that a band of output rows reaches, and the place of the band among them.
struct BandWindow
{
    int firstRow;
    int rowCount;
    double top; // of the band, measured from firstRow
    double height;
};

BandWindow windowOf(int firstOutput, int outputCount, const SourceShape& from, int outputHeight)
{
    const double scale = from.height / outputHeight;
    const double margin = kernelRadius * std::max(scale, 1.0) + 2.0;
    const double top = firstOutput * scale;
    const double bottom = (firstOutput + outputCount) * scale;
    const int first = std::max(0, static_cast<int>(std::floor(top - margin)));
    const int last = std::min(from.rows.height, static_cast<int>(std::ceil(bottom + margin)));
    return {first, last - first, top - first, bottom - top};
}

int tallestWindow(const SourceShape& from, int outputHeight)
{
    const double scale = from.height / outputHeight;
    const double rows = bandHeight * scale + 2 * (kernelRadius * std::max(scale, 1.0) + 3.0);
    return std::min(from.rows.height, static_cast<int>(std::ceil(rows)));
}

// The source's rows at the output's width. Narrowing them first, strip by strip with one and the same kernel,
// leaves little to hold and to compute for each band. 16 bits between the two steps keep the second one
// exact.
class NarrowedRows
{
public:
    static Result<NarrowedRows> create(const SourceShape& from, PixelSize to, int bands)
    {
        auto graph = ZimgGraph::build({from.rows.width, stripHeight, 1}, {from.width, 0.0, stripHeight},
                                      {to.width, stripHeight, 2}, bands);
        if (!graph) return graph.error();
        return NarrowedRows(from, to, bands, std::move(*graph));
    }

    // Brings [first, first + count) in; what lies above is given up.
    Status load(const RowProvider& source, int first, int count)
    {
        if (const int above = first - m_first; above > 0) {
            m_rows.moveToTop(above, m_next - first);
            m_first = first;
        }
        while (m_next < first + count) {
            const int strip = std::min(stripHeight, m_height - m_next);
            const auto rows = source(m_next, strip);
            if (!rows) return rows.error();
            m_strip.deinterleave(rows->first, rows->stride, strip);
            if (auto status = m_graph.run(m_strip, 0, m_rows, m_next - m_first); !status) return status;
            m_next += strip;
        }
        return Done{};
    }

    // Damage below the last row that the kernel reaches still makes the file unreadable.
    Status readRemainder(const RowProvider& source)
    {
        for (; m_next < m_height; ++m_next) {
            if (const auto row = source(m_next, 1); !row) return row.error();
        }
        return Done{};
    }

    // Begins with the row that was loaded first.
    const Planes& planes() const { return m_rows; }

private:
    NarrowedRows(const SourceShape& from, PixelSize to, int bands, ZimgGraph graph)
        : m_height(from.rows.height), m_graph(std::move(graph)),
          m_strip(from.rows.width, stripHeight, bands, 1),
          m_rows(to.width, tallestWindow(from, to.height) + stripHeight, bands, 2)
    {
    }

    int m_height;
    ZimgGraph m_graph;
    Planes m_strip;
    Planes m_rows;
    int m_first = 0; // the source row at the top of m_rows
    int m_next = 0;  // the source row to be read next
};

} // namespace

struct Resampler::State
{
    SourceShape from;
    PixelSize to;
    int bands;
    NarrowedRows rows;
    Planes target;
    int top = 0; // the row of the result to be made next
};

Resampler::Resampler(std::unique_ptr<State> state) : m_state(std::move(state)) {}
Resampler::Resampler(Resampler&&) noexcept = default;
Resampler& Resampler::operator=(Resampler&&) noexcept = default;
Resampler::~Resampler() = default;

Result<Resampler> Resampler::create(const SourceShape& from, PixelSize to, int bands)
{
    auto rows = NarrowedRows::create(from, to, bands);
    if (!rows) return rows.error();
    return Resampler(std::unique_ptr<State>(
        new State{from, to, bands, std::move(*rows), Planes(to.width, bandHeight, bands, 1)}));
}

Status Resampler::next(const RowProvider& source, int count, std::uint8_t* rows)
{
    auto& [from, to, bands, narrowed, target, top] = *m_state;
    const BandWindow window = windowOf(top, count, from, to.height);
    if (auto status = narrowed.load(source, window.firstRow, window.rowCount); !status) return status;
    const auto graph = ZimgGraph::build({to.width, window.rowCount, 2},
                                        {static_cast<double>(to.width), window.top, window.height},
                                        {to.width, count, 1}, bands);
    if (!graph) return graph.error();
    if (auto status = graph->run(narrowed.planes(), 0, target, 0); !status) return status;
    target.interleave(count, rows);
    top += count;
    return top < to.height ? Status(Done{}) : narrowed.readRemainder(source);
}

} // namespace lumora
