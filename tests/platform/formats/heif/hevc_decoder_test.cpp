// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/side_by_side.h"
#include "tests/platform/formats/heif/coded_pictures.h"
#include "tests/platform/formats/photographs.h"
#include "tests/platform/formats/written_pictures.h"

#include <vips/vips.h>

#include <vector>

namespace lumora {
namespace {

using Bytes = std::vector<std::uint8_t>;

class HevcDecoder : public test::WrittenPictures
{
protected:
    void saveWith(heif_matrix_coefficients matrix) const
    {
        test::saveCoded(m_file, test::photographLike(301, 203), {.matrix = matrix});
    }

    Bytes colors() const
    {
        const auto source = ImageSource::open(m_file);
        const auto picture = source ? decode(source->image()) : Result<Image>(source.error());
        if (!picture) return {};
        std::size_t size = 0;
        void* const memory = vips_image_write_to_memory(picture->pixels(), &size);
        const auto* const first = static_cast<const std::uint8_t*>(memory);
        Bytes bytes(first, first + size);
        g_free(memory);
        return bytes;
    }

    // The components as the HEIF library makes colours of them.
    Bytes librarysColors() const
    {
        const HeifContext context(heif_context_alloc());
        checkHeif(heif_context_read_from_file(context.get(), m_file.c_str(), nullptr));
        heif_image_handle* handle = nullptr;
        checkHeif(heif_context_get_primary_image_handle(context.get(), &handle));
        const HeifHandle primary(handle);
        heif_image* decoded = nullptr;
        checkHeif(heif_decode_image(handle, &decoded, heif_colorspace_RGB, heif_chroma_444, nullptr));
        const HeifPicture picture(decoded);
        Bytes bytes;
        for (int y = 0; y < heif_image_get_height(decoded, heif_channel_R); ++y) {
            for (int x = 0; x < heif_image_get_width(decoded, heif_channel_R); ++x) {
                for (const heif_channel channel : {heif_channel_R, heif_channel_G, heif_channel_B}) {
                    int stride = 0;
                    const auto* const plane = heif_image_get_plane_readonly(decoded, channel, &stride);
                    bytes.push_back(plane[std::ptrdiff_t{y} * stride + x]);
                }
            }
        }
        return bytes;
    }

    const std::filesystem::path m_file = m_folder / "a.heic";
};

TEST_F(HevcDecoder, MakesTheColoursThatTheLibraryMakes)
{
    for (const auto matrix :
         {heif_matrix_coefficients_ITU_R_BT_601_6, heif_matrix_coefficients_ITU_R_BT_709_5,
          heif_matrix_coefficients_ITU_R_BT_2020_2_non_constant_luminance}) {
        saveWith(matrix);
        const Bytes own = colors();
        EXPECT_EQ(own.size(), 301U * 203 * 3);
        EXPECT_TRUE(own == librarysColors()) << matrix;
    }
}

TEST_F(HevcDecoder, GivesTheSameOnSeveralProcessors)
{
    test::save(m_file, test::photographLike(700, 500));
    ASSERT_GT(std::filesystem::file_size(m_file), 250'000);
    const Bytes alone = colors();
    useProcessors(3);
    const Bytes together = colors();
    useProcessors(1);
    EXPECT_FALSE(alone.empty());
    EXPECT_TRUE(together == alone);
}

} // namespace
} // namespace lumora
