// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/platform/formats/heif/coded_pictures.h"
#include "tests/platform/formats/written_pictures.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

class HeifColors : public test::WrittenPictures
{
protected:
    std::filesystem::path pictureWith(heif_color_primaries primaries,
                                      heif_transfer_characteristics transfer) const
    {
        auto file = m_folder / "a.heic";
        test::saveCoded(file, test::uniformPicture(64, 64, {90, 90, 90}),
                        {.primaries = primaries, .transfer = transfer});
        return file;
    }

    static std::string profileOf(const std::filesystem::path& file)
    {
        const auto source = ImageSource::open(file);
        EXPECT_TRUE(source && decode(source->image()));
        return source->metadata().profileName;
    }

    const std::string m_described = "Colours as the picture described them";
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
