// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/row_reading.h"

#include "rows_ahead.h"

#include <vips/vips.h>

#include <algorithm>
#include <memory>

namespace lumora {

Status readRows(VipsImage* image, const RowTaker& take)
{
    const RegionPtr region = regionForEachRowOnce(image);
    RowProvider provider = rowsAhead(image);
    if (!provider) provider = [&](int first, int count) { return rowsOf(region.get(), first, count); };
    const int height = vips_image_get_height(image);
    for (int top = 0; top < height; top += streamedRows) {
        const int count = std::min(streamedRows, height - top);
        const auto rows = provider(top, count);
        if (!rows) return rows.error();
        if (auto status = take(top, count, *rows); !status) return status;
    }
    return Done{};
}

} // namespace lumora
