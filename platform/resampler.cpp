// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/resampler.h"

#include "platform/planes.h"

#include <zimg.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>

namespace lumora {
namespace {

constexpr double kernelRadius = 3.0;
// Output rows a band: enough that building the band's filter costs nothing beside running it.
constexpr int bandHeight = 96;

struct GraphDelete
{
    void operator()(zimg_filter_graph* graph) const { zimg_filter_graph_free(graph); }
};
using Graph = std::unique_ptr<zimg_filter_graph, GraphDelete>;

Error takeZimgError()
{
    std::array<char, 256> text{};
    zimg_get_last_error(text.data(), text.size());
    zimg_clear_last_error();
    return Error{text.data()};
}

// The source rows that a band of output rows reaches, and the place of the band among them.
struct BandWindow
{
    int firstRow;
    int rowCount;
    double top; // of the band, measured from firstRow
    double height;
};

BandWindow windowOf(int firstOutput, int outputCount, int sourceHeight, int outputHeight)
{
    const double scale = static_cast<double>(sourceHeight) / outputHeight;
    const double margin = kernelRadius * std::max(scale, 1.0) + 2.0;
    const double top = firstOutput * scale;
    const double bottom = (firstOutput + outputCount) * scale;
    const int first = std::max(0, static_cast<int>(std::floor(top - margin)));
    const int last = std::min(sourceHeight, static_cast<int>(std::ceil(bottom + margin)));
    return {first, last - first, top - first, bottom - top};
}

zimg_image_format formatOf(PixelSize size, int bands)
{
    zimg_image_format format;
    zimg_image_format_default(&format, ZIMG_API_VERSION);
    format.width = static_cast<unsigned>(size.width);
    format.height = static_cast<unsigned>(size.height);
    format.pixel_type = ZIMG_PIXEL_BYTE;
    format.pixel_range = ZIMG_RANGE_FULL;
    format.color_family = bands <= 2 ? ZIMG_COLOR_GREY : ZIMG_COLOR_RGB;
    format.matrix_coefficients = bands <= 2 ? ZIMG_MATRIX_UNSPECIFIED : ZIMG_MATRIX_RGB;
    // A premultiplied fourth (or second) plane is scaled like the others, which also serves the fourth ink of
    // CMYK.
    format.alpha = bands == 2 || bands == 4 ? ZIMG_ALPHA_PREMULTIPLIED : ZIMG_ALPHA_NONE;
    return format;
}

Result<Graph> buildGraph(const BandWindow& window, PixelSize from, PixelSize to, int bands)
{
    zimg_image_format source = formatOf({from.width, window.rowCount}, bands);
    source.active_region.left = 0.0;
    source.active_region.width = from.width;
    source.active_region.top = window.top;
    source.active_region.height = window.height;
    const zimg_image_format target = formatOf(to, bands);

    zimg_graph_builder_params parameters;
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.resample_filter = ZIMG_RESIZE_LANCZOS;
    parameters.filter_param_a = kernelRadius;
    parameters.cpu_type = ZIMG_CPU_AUTO_64B;
    Graph graph(zimg_filter_graph_build(&source, &target, &parameters));
    if (!graph) return takeZimgError();
    return graph;
}

// The library numbers its planes by meaning: alpha is always the fourth.
int planeIndex(int band, int bands)
{
    return bands == 2 && band == 1 ? 3 : band;
}

template <class Buffer>
Buffer describe(const Planes& planes)
{
    Buffer buffer{};
    buffer.version = ZIMG_API_VERSION;
    for (int band = 0; band < planes.bands(); ++band) {
        auto& plane = buffer.plane[planeIndex(band, planes.bands())];
        plane.data = const_cast<std::uint8_t*>(planes.row(band, 0));
        plane.stride = planes.stride();
        plane.mask = ZIMG_BUFFER_MAX;
    }
    return buffer;
}

class BandResampler
{
public:
    BandResampler(const RowProvider& source, PixelSize from, PixelSize to, int bands)
        : m_source(source), m_from(from), m_to(to), m_bands(bands)
    {
    }

    Status run(std::vector<std::uint8_t>& output)
    {
        const auto outputRowBytes = static_cast<std::size_t>(m_to.width) * static_cast<std::size_t>(m_bands);
        output.resize(outputRowBytes * static_cast<std::size_t>(m_to.height));
        Planes target(m_to.width, std::min(bandHeight, m_to.height), m_bands);
        for (int top = 0; top < m_to.height; top += bandHeight) {
            const int count = std::min(bandHeight, m_to.height - top);
            const BandWindow window = windowOf(top, count, m_from.height, m_to.height);
            if (auto status = load(window); !status) return status;
            if (auto status = filter(window, count, target); !status) return status;
            target.interleave(0, count, output.data() + outputRowBytes * static_cast<std::size_t>(top));
        }
        return readRemainder();
    }

private:
    // Keeps the rows that the last band shared with this one and reads the rest.
    Status load(const BandWindow& window)
    {
        Planes next(m_from.width, window.rowCount, m_bands);
        const int kept = std::max(0, m_rowsRead - window.firstRow);
        if (kept > 0) next.copyRows(m_window, window.firstRow - m_firstRow, kept);
        m_window = std::move(next);
        m_firstRow = window.firstRow;

        const auto rowBytes = static_cast<std::size_t>(m_from.width) * static_cast<std::size_t>(m_bands);
        constexpr int rowsAtOnce = 64;
        m_packed.resize(rowBytes * rowsAtOnce);
        const int end = window.firstRow + window.rowCount;
        while (m_rowsRead < end) {
            const int count = std::min(rowsAtOnce, end - m_rowsRead);
            if (auto status = m_source(m_rowsRead, count, m_packed.data()); !status) return status;
            m_window.deinterleave(m_packed.data(), m_rowsRead - window.firstRow, count);
            m_rowsRead += count;
        }
        return Done{};
    }

    Status filter(const BandWindow& window, int count, Planes& target)
    {
        auto graph = buildGraph(window, m_from, {m_to.width, count}, m_bands);
        if (!graph) return graph.error();
        std::size_t scratchBytes = 0;
        if (zimg_filter_graph_get_tmp_size(graph->get(), &scratchBytes) != ZIMG_ERROR_SUCCESS)
            return takeZimgError();
        const AlignedBytes scratch = allocateAligned(scratchBytes);
        const auto from = describe<zimg_image_buffer_const>(m_window);
        const auto to = describe<zimg_image_buffer>(target);
        if (zimg_filter_graph_process(graph->get(), &from, &to, scratch.get(), nullptr, nullptr, nullptr,
                                      nullptr) != ZIMG_ERROR_SUCCESS) {
            return takeZimgError();
        }
        return Done{};
    }

    // Damage below the last row that the kernel reaches still makes the file unreadable.
    Status readRemainder()
    {
        while (m_rowsRead < m_from.height) {
            if (auto status = m_source(m_rowsRead, 1, m_packed.data()); !status) return status;
            ++m_rowsRead;
        }
        return Done{};
    }

    const RowProvider& m_source;
    PixelSize m_from;
    PixelSize m_to;
    int m_bands;
    Planes m_window{0, 0, 0};
    int m_firstRow = 0;
    int m_rowsRead = 0;
    std::vector<std::uint8_t> m_packed;
};

} // namespace

Result<std::vector<std::uint8_t>> resample(const RowProvider& source, PixelSize from, PixelSize to, int bands)
{
    std::vector<std::uint8_t> output;
    if (auto status = BandResampler(source, from, to, bands).run(output); !status) return status.error();
    return output;
}

} // namespace lumora
