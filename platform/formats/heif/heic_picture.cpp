// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heic_picture.h"

#include "components/component_rows.h"
#include "components/component_stream.h"
#include "format_io.h"
#include "pixels/row_reading.h"

#include <vips/vips.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace lumora {
namespace {

constexpr std::uint8_t noDifference = 128;

struct Plane
{
    std::uint8_t* samples = nullptr;
    int stride = 0;
    int width = 0;
    int height = 0;

    std::uint8_t* row(int y) const { return samples + static_cast<std::ptrdiff_t>(y) * stride; }
};

Plane addPlane(heif_image* picture, heif_channel channel, int width, int height)
{
    checkHeif(heif_image_add_plane(picture, channel, width, height, 8));
    Plane plane{nullptr, 0, width, height};
    plane.samples = heif_image_get_plane(picture, channel, &plane.stride);
    return plane;
}

int roundedUp(int length, int multiple)
{
    return (length + multiple - 1) / multiple * multiple;
}

class PictureWriter
{
public:
    PictureWriter(heif_image* picture, int width, int height, int bands, bool hasFullChroma)
        : m_width(width), m_bands(bands), m_hasFullChroma(hasFullChroma),
          m_luma(addPlane(picture, heif_channel_Y, width, height)),
          m_colors(static_cast<std::size_t>(colorBands()) * static_cast<std::size_t>(width)),
          m_stream(shapeOf(height), [this](int row) { store(row); })
    {
        const int chromaWidth = hasFullChroma ? width : (width + 1) / 2;
        const int chromaHeight = hasFullChroma ? height : (height + 1) / 2;
        m_chroma = {addPlane(picture, heif_channel_Cb, chromaWidth, chromaHeight),
                    addPlane(picture, heif_channel_Cr, chromaWidth, chromaHeight)};
        if (hasAlpha()) m_alpha = addPlane(picture, heif_channel_Alpha, width, height);
    }
    PictureWriter(const PictureWriter&) = delete;
    PictureWriter& operator=(const PictureWriter&) = delete;

    void add(int y, const std::uint8_t* row)
    {
        if (!hasAlpha()) {
            m_stream.add(row);
            return;
        }
        const int colors = colorBands();
        std::uint8_t* color = m_colors.data();
        std::uint8_t* const alphas = m_alpha.row(y);
        for (int x = 0; x < m_width; ++x, row += m_bands, color += colors) {
            for (int band = 0; band < colors; ++band)
                color[band] = row[band];
            alphas[x] = row[colors];
        }
        m_stream.add(m_colors.data());
    }
    void finish() { m_stream.finish(); }

private:
    bool hasAlpha() const { return m_bands == 2 || m_bands == 4; }
    bool isColor() const { return m_bands > 2; }
    int colorBands() const { return isColor() ? 3 : 1; }

    ComponentShape shapeOf(int height) const
    {
        constexpr int groups = 16;
        const ChromaRows halved = m_hasFullChroma ? ChromaRows::Full : ChromaRows::Means;
        return {m_width, height, roundedUp(m_width, groups), roundedUp(height, 2),
                isColor() ? halved : ChromaRows::None};
    }

    void store(int row)
    {
        if (row < m_luma.height) componentToBytes(m_stream.luma().row(row), m_width, m_luma.row(row));
        if (!m_hasFullChroma && row % 2 == 0) return;
        const int chromaRow = m_hasFullChroma ? row : row / 2;
        for (int difference = 0; difference < 2; ++difference)
            storeChroma(difference, chromaRow);
    }

    void storeChroma(int difference, int row)
    {
        const Plane& plane = m_chroma[static_cast<std::size_t>(difference)];
        if (row >= plane.height) return;
        if (isColor())
            componentToBytes(m_stream.chroma(difference).row(row), plane.width, plane.row(row));
        else
            std::memset(plane.row(row), noDifference, static_cast<std::size_t>(plane.width));
    }

    int m_width;
    int m_bands;
    bool m_hasFullChroma;
    Plane m_luma;
    std::array<Plane, 2> m_chroma;
    Plane m_alpha;
    std::vector<std::uint8_t> m_colors; // of a row without its alpha
    ComponentStream m_stream;
};

void attachColors(heif_image* picture, VipsImage* image)
{
    const HeifCodePoints points(heif_nclx_color_profile_alloc());
    checkHeif(heif_image_set_nclx_color_profile(picture, points.get()));
    const std::string_view profile = blobOf(image, VIPS_META_ICC_NAME);
    if (profile.empty()) return;
    checkHeif(heif_image_set_raw_color_profile(picture, "prof", profile.data(), profile.size()));
}

} // namespace

HeifPicture heicPictureOf(VipsImage* image, bool hasFullChroma)
{
    const int width = vips_image_get_width(image);
    const int height = vips_image_get_height(image);
    heif_image* made = nullptr;
    checkHeif(heif_image_create(width, height, heif_colorspace_YCbCr,
                                hasFullChroma ? heif_chroma_444 : heif_chroma_420, &made));
    HeifPicture picture(made);
    PictureWriter writer(made, width, height, vips_image_get_bands(image), hasFullChroma);
    const auto status = readRows(image, [&](int first, int count, const RowSpan& strip) -> Status {
        for (int y = 0; y < count; ++y)
            writer.add(first + y, strip.first + y * strip.stride);
        return Done{};
    });
    if (!status) throw status.error();
    writer.finish();
    attachColors(made, image);
    return picture;
}

} // namespace lumora
