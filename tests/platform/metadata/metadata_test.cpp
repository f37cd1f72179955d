// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/metadata.h"

#include <gtest/gtest.h>

#include <array>

namespace lumora {
namespace {

const Metadata full{.exif = {{"Exif.Photo.ISOSpeedRatings", 3, "d"}},
                    .gps = {{"Exif.GPSInfo.GPSAltitudeRef", 1, "a"}},
                    .tiff = {{"Exif.Image.Make", 2, "Maker"}},
                    .iptc = {{"Iptc.Application2.Keywords", 2, "harbour"}},
                    .pngTexts = {{"Title", "Harbour"}},
                    .pngDensity = {300, 300},
                    .jfifDensity = {150, 150},
                    .gifComments = {"a remark"},
                    .xmp = "<x:xmpmeta/>",
                    .orientation = 6,
                    .colorModel = "RGB",
                    .profileName = "Display P3"};

struct Removal
{
    const char* name;
    MetadataGroup group;
    void (*clear)(Metadata& metadata);
};

void PrintTo(const Removal& removal, std::ostream* out)
{
    *out << removal.name;
}

class RemovedGroup : public testing::TestWithParam<Removal>
{
};

TEST_P(RemovedGroup, TakesNothingElseAlong)
{
    Metadata expected = full;
    GetParam().clear(expected);
    ASSERT_NE(expected, full);
    Metadata metadata = full;
    metadata.remove(GetParam().group);
    EXPECT_EQ(metadata, expected);
}

INSTANTIATE_TEST_SUITE_P(
    , RemovedGroup,
    testing::Values(Removal{"Exif", MetadataGroup::exif, [](Metadata& m) { m.exif = {}; }},
                    Removal{"Gps", MetadataGroup::gps, [](Metadata& m) { m.gps = {}; }},
                    Removal{"Tiff", MetadataGroup::tiff, [](Metadata& m) { m.tiff = {}; }},
                    Removal{"Iptc", MetadataGroup::iptc, [](Metadata& m) { m.iptc = {}; }},
                    Removal{"Png", MetadataGroup::png,
                            [](Metadata& m) {
                                m.pngTexts = {};
                                m.pngDensity = {};
                            }},
                    Removal{"Jfif", MetadataGroup::jfif, [](Metadata& m) { m.jfifDensity = {}; }},
                    Removal{"Gif", MetadataGroup::gif, [](Metadata& m) { m.gifComments = {}; }}),
    [](const auto& test) { return std::string(test.param.name); });

TEST(Resolution, IsKnownWhenBothAxesAre)
{
    EXPECT_TRUE((Resolution{72, 71}).isKnown());
    EXPECT_FALSE((Resolution{72, 0}).isKnown());
    EXPECT_FALSE((Resolution{0, 72}).isKnown());
    EXPECT_FALSE(Resolution{}.isKnown());
}

} // namespace
} // namespace lumora
