// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/platform/formats/written_pictures.h"
#include "tests/support/color_patches.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using Chunk = std::pair<std::string, std::string>;

class PngColors : public test::WrittenPictures
{
protected:
    // What its profile calls itself, of a picture with these chunks and perhaps a profile.
    std::string profileOf(const std::vector<Chunk>& chunks, const std::string& profile = {})
    {
        const auto file = m_folder / "a.png";
        test::save(file, test::uniformPicture(4, 4, {10, 20, 30}), {.profile = profile});
        for (const auto& [type, data] : chunks)
            test::insertChunk(file, type, data);
        const auto source = ImageSource::open(file);
        EXPECT_TRUE(source) << source.error().description;
        EXPECT_TRUE(source && decode(source->image()));
        return source ? source->metadata().profileName : "unreadable";
    }

    static Chunk gamma(std::uint32_t value) { return {"gAMA", test::bigEndianNumbers({value})}; }
    static Chunk codes(const char* four) { return {"cICP", std::string(four, 4)}; }

    const Chunk m_srgb{"sRGB", std::string(1, '\0')};
    const Chunk m_linear = gamma(100000);
    const Chunk m_p3 = codes("\x0C\x0D\0\1");
    const std::string m_described = "Colours as the picture described them";
};

TEST_F(PngColors, AreThoseOfItsChunks)
{
    EXPECT_EQ(profileOf({m_linear}), m_described);
    EXPECT_EQ(profileOf({m_p3}), m_described);
    EXPECT_EQ(profileOf({}), "");
}

TEST_F(PngColors, ThatMeanSrgbCostNothing)
{
    EXPECT_EQ(profileOf({m_srgb}), "");
    EXPECT_EQ(profileOf({gamma(45455)}), "");
    EXPECT_EQ(profileOf({codes("\1\x0D\0\1")}), "");
}

TEST_F(PngColors, KeepTheOrderOfTheStandard)
{
    const std::string own = profileOf({}, "p3");
    EXPECT_NE(own, "");
    EXPECT_EQ(profileOf({m_linear}, "p3"), own);
    EXPECT_EQ(profileOf({m_linear, m_srgb}), "");
    EXPECT_EQ(profileOf({m_p3}, "p3"), m_described);
    EXPECT_EQ(profileOf({codes("\1\x0D\0\1")}, "p3"), "");
    EXPECT_EQ(profileOf({m_srgb, m_p3}), m_described);
}

TEST_F(PngColors, ThatMakeNoSenseAreIgnored)
{
    EXPECT_EQ(profileOf({gamma(0)}), "");
    EXPECT_EQ(profileOf({gamma(0x7FFFFFFF)}), "");
    EXPECT_EQ(profileOf({gamma(1)}), "");
    EXPECT_EQ(profileOf({{"gAMA", "abc"}}), "");
    EXPECT_EQ(profileOf({{"cHRM", std::string(32, '\0')}}), "");
    EXPECT_EQ(profileOf({codes("\x0C\x0D\1\1")}), "") << "differences of colours";
    EXPECT_EQ(profileOf({codes("\x0C\xFF\0\1"), m_linear}), m_described) << "the next in order";
}

} // namespace
} // namespace lumora
