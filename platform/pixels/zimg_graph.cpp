// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "zimg_graph.h"

#include <zimg.h>

#include <array>

namespace lumora {
namespace {

Error takeZimgError()
{
    std::array<char, 256> text{};
    const zimg_error_code_e code = zimg_get_last_error(text.data(), text.size());
    zimg_clear_last_error();
    return code == ZIMG_ERROR_OUT_OF_MEMORY ? outOfMemory() : Error{text.data()};
}

zimg_image_format formatOf(const StripShape& shape, int bands)
{
    zimg_image_format format;
    zimg_image_format_default(&format, ZIMG_API_VERSION);
    format.width = static_cast<unsigned>(shape.width);
    format.height = static_cast<unsigned>(shape.height);
    format.pixel_type = shape.componentBytes == 1 ? ZIMG_PIXEL_BYTE : ZIMG_PIXEL_WORD;
    format.depth = static_cast<unsigned>(shape.componentBytes) * 8U;
    format.pixel_range = ZIMG_RANGE_FULL;
    format.color_family = bands <= 2 ? ZIMG_COLOR_GREY : ZIMG_COLOR_RGB;
    format.matrix_coefficients = bands <= 2 ? ZIMG_MATRIX_UNSPECIFIED : ZIMG_MATRIX_RGB;
    // A premultiplied fourth (or second) plane is scaled like the others, which also serves the fourth ink of
    // CMYK.
    format.alpha = bands == 2 || bands == 4 ? ZIMG_ALPHA_PREMULTIPLIED : ZIMG_ALPHA_NONE;
    return format;
}

// The library numbers its planes by meaning: alpha is always the fourth.
int planeIndex(int band, int bands)
{
    return bands == 2 && band == 1 ? 3 : band;
}

template <class Buffer>
Buffer describe(const Planes& planes, int firstRow)
{
    Buffer buffer{};
    buffer.version = ZIMG_API_VERSION;
    for (int band = 0; band < planes.bands(); ++band) {
        auto& plane = buffer.plane[planeIndex(band, planes.bands())];
        plane.data = const_cast<std::uint8_t*>(planes.row(band, firstRow));
        plane.stride = planes.stride();
        plane.mask = ZIMG_BUFFER_MAX;
    }
    return buffer;
}

} // namespace

void ZimgGraph::Free::operator()(zimg_filter_graph* graph) const
{
    zimg_filter_graph_free(graph);
}

Result<ZimgGraph> ZimgGraph::build(const StripShape& from, const StripRegion& region, const StripShape& to,
                                   int bands)
{
    zimg_image_format source = formatOf(from, bands);
    source.active_region.left = 0.0;
    source.active_region.width = region.width;
    source.active_region.top = region.top;
    source.active_region.height = region.height;
    const zimg_image_format target = formatOf(to, bands);

    zimg_graph_builder_params parameters;
    zimg_graph_builder_params_default(&parameters, ZIMG_API_VERSION);
    parameters.resample_filter = ZIMG_RESIZE_LANCZOS;
    parameters.filter_param_a = 3.0;
    // Not the 64-byte instructions: with them version 3.0.4 gives wrong columns at some reductions slightly
    // above 2.
    parameters.cpu_type = ZIMG_CPU_AUTO;
    Handle graph(zimg_filter_graph_build(&source, &target, &parameters));
    if (!graph) return takeZimgError();

    std::size_t scratchBytes = 0;
    if (zimg_filter_graph_get_tmp_size(graph.get(), &scratchBytes) != ZIMG_ERROR_SUCCESS)
        return takeZimgError();
    return ZimgGraph(std::move(graph), allocateAligned(scratchBytes));
}

Status ZimgGraph::run(const Planes& from, int firstFrom, Planes& to, int firstTo) const
{
    const auto source = describe<zimg_image_buffer_const>(from, firstFrom);
    const auto target = describe<zimg_image_buffer>(to, firstTo);
    if (zimg_filter_graph_process(m_graph.get(), &source, &target, m_scratch.get(), nullptr, nullptr, nullptr,
                                  nullptr) != ZIMG_ERROR_SUCCESS) {
        return takeZimgError();
    }
    return Done{};
}

} // namespace lumora
