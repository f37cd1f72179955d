// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_encoder.h"

#include "jpeg/block_rows.h"
#include "pixels/row_stream.h"

#include <vips/vips.h>

#include <cstddef>

namespace lumora {

Status encodeJpeg(const JpegRequest& request, const CoefficientWriter::Taker& take)
{
    const CoefficientShape shape{vips_image_get_width(request.image), vips_image_get_height(request.image),
                                 vips_image_get_bands(request.image),
                                 vips_image_get_bands(request.image) == 3 && !request.hasFullChroma};
    CoefficientWriter writer(take);
    if (auto status = writer.start(shape); !status) return status;
    for (std::size_t i = 0; i < request.codings.size(); ++i) {
        if (auto status = writer.setSteps(static_cast<int>(i), request.codings[i].steps); !status)
            return status;
    }
    BlockRows blocks(shape, request.codings, writer);
    auto status = readRows(request.image, [&](int, int count, const RowSpan& rows) -> Status {
        for (int y = 0; y < count; ++y)
            blocks.add(rows.first + y * rows.stride);
        return Done{};
    });
    if (!status) return status;
    blocks.finish();
    if (!blocks.isGood()) return outOfMemory();
    return writer.write(request.profile);
}

} // namespace lumora
