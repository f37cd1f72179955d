// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/color_profile.h"

#include "pixels/color_conversion.h"
#include "tests/platform/pixels/memory_picture.h"

#include <gtest/gtest.h>

#include <lcms2.h>

#include <algorithm>

namespace lumora {
namespace {

std::vector<std::uint8_t> profileCalled(const wchar_t* name)
{
    const cmsHPROFILE profile = cmsCreate_sRGBProfile();
    cmsMLU* text = cmsMLUalloc(nullptr, 1);
    cmsMLUsetWide(text, "en", "US", name);
    cmsWriteTag(profile, cmsSigProfileDescriptionTag, text);
    cmsMLUfree(text);
    cmsUInt32Number size = 0;
    cmsSaveProfileToMem(profile, nullptr, &size);
    std::vector<std::uint8_t> bytes(size);
    cmsSaveProfileToMem(profile, bytes.data(), &size);
    cmsCloseProfile(profile);
    return bytes;
}

TEST(AttachedProfile, IsThatOfThePictureOrEmpty)
{
    const VipsImagePtr picture = test::pictureOf(test::corneredPicture(2, 2));
    EXPECT_TRUE(attachedProfile(picture.get()).empty());
    vips_image_set_blob_copy(picture.get(), VIPS_META_ICC_NAME, srgbProfile().data(), srgbProfile().size());
    EXPECT_TRUE(std::ranges::equal(attachedProfile(picture.get()), srgbProfile()));
}

TEST(ProfileDescription, IsWhatTheProfileCallsItself)
{
    EXPECT_EQ(profileDescription(profileCalled(L"Adobe RGB (1998)")), "Adobe RGB (1998)");
    EXPECT_EQ(profileDescription(profileCalled(L"Gr\u00F6\u00DFe \u4E2D")), "Gr\u00F6\u00DFe \u4E2D");
}

TEST(ProfileDescription, IsEmptyForWhatIsNoProfile)
{
    EXPECT_EQ(profileDescription({}), "");
    EXPECT_EQ(profileDescription(std::vector<std::uint8_t>(500, 7)), "");
    std::vector<std::uint8_t> cut = profileCalled(L"Cut");
    cut.resize(60);
    EXPECT_EQ(profileDescription(cut), "");
}

} // namespace
} // namespace lumora
