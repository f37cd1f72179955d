// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "bmp/bmp_loader.h"

#include "bmp/bmp_codec.h"
#include "pixels/row_stream.h"
#include "row_picture.h"
#include "system/regular_file.h"
#include "types/format.h"

#include <vips/vips.h>

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace lumora {
namespace {

// 32 bits a pixel, and room for headers and a profile.
constexpr std::size_t largestFile = std::size_t{maximumDecodedPixels} * 4 + (std::size_t{1} << 26U);

class RowsOfBmp : public RowSource
{
public:
    RowsOfBmp(std::vector<std::byte> file, BmpRows rows) : m_file(std::move(file)), m_rows(std::move(rows)) {}

    Status next(std::uint8_t* row) override
    {
        return m_rows.read(m_next++, std::as_writable_bytes(std::span(row, m_rows.rowBytes())));
    }

private:
    std::vector<std::byte> m_file;
    BmpRows m_rows; // looks into the file
    std::int64_t m_next = 0;
};

} // namespace

Result<VipsImagePtr> loadBmp(int descriptor)
{
    auto file = readAll(descriptor, largestFile);
    if (!file) return file.error();
    auto rows = BmpRows::open(*file);
    if (!rows) return rows.error();
    const BmpHeader header = rows->header();

    auto made =
        newPicture({static_cast<int>(header.width), static_cast<int>(header.height), header.channels(),
                    VIPS_FORMAT_UCHAR, VIPS_CODING_NONE, VIPS_INTERPRETATION_sRGB});
    if (!made) return made.error();
    VipsImagePtr image = std::move(*made);
    if (!header.iccProfile.empty()) {
        vips_image_set_blob_copy(image.get(), VIPS_META_ICC_NAME, header.iccProfile.data(),
                                 header.iccProfile.size());
    }
    if (vips_image_pipelinev(image.get(), VIPS_DEMAND_STYLE_THINSTRIP, nullptr) != 0) return takeVipsError();
    return rowPicture(std::move(image), std::make_unique<RowsOfBmp>(std::move(*file), std::move(*rows)));
}

} // namespace lumora
