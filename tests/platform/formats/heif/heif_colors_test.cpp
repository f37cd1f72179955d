// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/platform/formats/written_pictures.h"

#include <gtest/gtest.h>
#include <libheif/heif.h>

namespace lumora {
namespace {

class HeifColors : public test::WrittenPictures
{
protected:
    // A grey picture whose container describes its colours by these codes, as telephones do.
    std::filesystem::path pictureWith(heif_color_primaries primaries,
                                      heif_transfer_characteristics transfer) const
    {
        auto file = m_folder / "a.heic";
        heif_image* picture = nullptr;
        heif_image_create(64, 64, heif_colorspace_RGB, heif_chroma_interleaved_RGB, &picture);
        heif_image_add_plane(picture, heif_channel_interleaved, 64, 64, 8);
        heif_color_profile_nclx* const codes = heif_nclx_color_profile_alloc();
        codes->color_primaries = primaries;
        codes->transfer_characteristics = transfer;
        codes->matrix_coefficients = heif_matrix_coefficients_ITU_R_BT_601_6;
        codes->full_range_flag = 1;
        heif_image_set_nclx_color_profile(picture, codes);
        write(picture, codes, file);
        heif_nclx_color_profile_free(codes);
        heif_image_release(picture);
        return file;
    }

    static std::string profileOf(const std::filesystem::path& file)
    {
        const auto source = ImageSource::open(file);
        EXPECT_TRUE(source && decode(source->image()));
        return source->metadata().profileName;
    }

    const std::string m_described = "Colours as the picture described them";

private:
    static void write(heif_image* picture, heif_color_profile_nclx* codes, const std::filesystem::path& file)
    {
        heif_context* const context = heif_context_alloc();
        heif_encoder* encoder = nullptr;
        heif_context_get_encoder_for_format(context, heif_compression_HEVC, &encoder);
        heif_encoding_options* const options = heif_encoding_options_alloc();
        options->output_nclx_profile = codes;
        options->macOS_compatibility_workaround_no_nclx_profile = 0;
        heif_context_encode_image(context, picture, encoder, options, nullptr);
        EXPECT_EQ(heif_context_write_to_file(context, file.c_str()).code, heif_error_Ok);
        heif_encoding_options_free(options);
        heif_encoder_release(encoder);
        heif_context_free(context);
    }
};

TEST_F(HeifColors, AreThoseOfItsCodes)
{
    EXPECT_EQ(profileOf(pictureWith(heif_color_primaries_SMPTE_EG_432_1,
                                    heif_transfer_characteristic_IEC_61966_2_1)),
              m_described);
    EXPECT_EQ(profileOf(pictureWith(heif_color_primaries_ITU_R_BT_2020_2_and_2100_0,
                                    heif_transfer_characteristic_ITU_R_BT_2100_0_PQ)),
              m_described);
}

TEST_F(HeifColors, ThatMeanSrgbOrNothingCostNothing)
{
    EXPECT_EQ(profileOf(pictureWith(heif_color_primaries_ITU_R_BT_709_5,
                                    heif_transfer_characteristic_IEC_61966_2_1)),
              "");
    EXPECT_EQ(
        profileOf(pictureWith(heif_color_primaries_unspecified, heif_transfer_characteristic_unspecified)),
        "");
}

TEST_F(HeifColors, GiveWayToAProfile)
{
    test::save(m_folder / "p3.heic", test::corneredPicture(16, 16), {.profile = "p3"});
    const std::string own = profileOf(m_folder / "p3.heic");
    EXPECT_NE(own, "");
    EXPECT_NE(own, m_described);
}

} // namespace
} // namespace lumora
