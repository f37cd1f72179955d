// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One scaling step of the resampling library, built once and run on any number of strips. One thread.
#pragma once

#include "planes.h"
#include "system/result.h"

#include <cstddef>
#include <memory>

struct zimg_filter_graph;

namespace lumora {

// A strip of a picture in planes, the same on every run of a graph.
struct StripShape
{
    int width;
    int height;
    int componentBytes; // 1 or 2, of the full range
};

// What the step scales to the whole target, from the left edge of the source strip on: it may begin and end
// between two pixels, and the pixels around it feed the kernel.
struct StripRegion
{
    double width;
    double top;
    double height;
};

class ZimgGraph
{
public:
    // Scales by the Lanczos-3 kernel. 1 to 4 bands; a second or fourth band is scaled like the others. Fails
    // for what the library does not scale, such as an empty strip.
    static Result<ZimgGraph> build(const StripShape& from, const StripRegion& region, const StripShape& to,
                                   int bands);

    // From row `firstFrom` of one set of planes on to row `firstTo` of the other.
    Status run(const Planes& from, int firstFrom, Planes& to, int firstTo) const;

private:
    struct Free
    {
        void operator()(zimg_filter_graph* graph) const;
    };
    using Handle = std::unique_ptr<zimg_filter_graph, Free>;

    ZimgGraph(Handle graph, AlignedBytes scratch) : m_graph(std::move(graph)), m_scratch(std::move(scratch))
    {
    }

    Handle m_graph;
    AlignedBytes m_scratch;
};

} // namespace lumora
