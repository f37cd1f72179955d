// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_encoder.h"

#include "jpeg/block_rows.h"
#include "jpeg/quality_coding.h"
#include "pixels/row_stream.h"

#include <vips/vips.h>

#include <array>
#include <vector>

namespace lumora {

Status encodeJpeg(const JpegRequest& request, const CoefficientWriter::Taker& take)
{
    constexpr std::array components{JpegComponent::brightness, JpegComponent::blueDifference,
                                    JpegComponent::redDifference};
    const CoefficientShape shape{vips_image_get_width(request.image), vips_image_get_height(request.image),
                                 vips_image_get_bands(request.image),
                                 vips_image_get_bands(request.image) == 3 && !request.hasFullChroma};
    CoefficientWriter writer(take);
    if (auto status = writer.start(shape); !status) return status;
    std::vector<ComponentCoding> codings;
    for (int i = 0; i < shape.components; ++i) {
        codings.push_back(
            codingOf(components.at(static_cast<std::size_t>(i)), request.quality, request.hasFullChroma));
        if (auto status = writer.setSteps(i, codings.back().steps); !status) return status;
    }
    BlockRows blocks(shape, codings, writer);
    const auto status = readRows(request.image, [&](int, int count, const RowSpan& rows) -> Status {
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
