// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_encoder.h"

#include "jpeg/block_rows.h"
#include "pixels/row_reading.h"

#include <vips/vips.h>

#include <cstddef>

namespace lumora {

Status encodeJpeg(const JpegRequest& request, const JpegTaker& take)
{
    const CoefficientShape shape{vips_image_get_width(request.image), vips_image_get_height(request.image),
                                 vips_image_get_bands(request.image),
                                 vips_image_get_bands(request.image) == 3 && !request.hasFullChroma};
    ProgressiveFile file(shape);
    BlockRows blocks(shape, request.codings, file);
    auto status = readRows(request.image, [&](int, int count, const RowSpan& rows) -> Status {
        for (int y = 0; y < count; ++y)
            blocks.add(rows.first + y * rows.stride);
        return Done{};
    });
    if (!status) return status;
    blocks.finish();
    StepTables steps;
    for (const ComponentCoding& coding : request.codings)
        steps.push_back(coding.steps);
    return file.write(steps, request.profile, take);
}

} // namespace lumora
