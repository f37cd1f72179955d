// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/local/destination_properties.h"

#include "tests/support/settings.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumora {
namespace {

using ImageOptimizer::destinationProperties;
using ImageOptimizer::metadataKeys;
using test::settings;

Metadata cameraMetadata()
{
    const MetadataFields fields{{"some.field", 2, "value"}};
    return {.exif = fields,
            .gps = fields,
            .tiff = fields,
            .iptc = fields,
            .pngTexts = {{"Title", "a title"}},
            .pngDensity = {300, 300},
            .jfifDensity = {72, 72},
            .gifComments = {"a remark"},
            .xmp = "<x:xmpmeta/>",
            .orientation = 6,
            .colorModel = "RGB",
            .profileName = "Display P3"};
}

TEST(DestinationProperties, HoldAtMostTheQualityWhenMetadataGoes)
{
    const auto properties =
        destinationProperties(settings({.outputFormat = OutputFormat::jpeg}), cameraMetadata());
    EXPECT_EQ(properties, (DestinationProperties{{}, 0.82}));
}

TEST(DestinationProperties, CarryEverythingButTheOrientationWhenMetadataStays)
{
    DestinationProperties expected{cameraMetadata(), 0.82};
    expected.metadata.orientation.reset();
    EXPECT_EQ(destinationProperties(settings({.outputFormat = OutputFormat::jpeg,
                                              .removeColorManagement = false,
                                              .removeMetadata = false}),
                                    cameraMetadata()),
              expected);
}

TEST(DestinationProperties, LoseColourModelAndProfileNameWithColourManagement)
{
    DestinationProperties expected{cameraMetadata(), 0.82};
    expected.metadata.orientation.reset();
    expected.metadata.colorModel.clear();
    expected.metadata.profileName.clear();
    EXPECT_EQ(destinationProperties(settings({.outputFormat = OutputFormat::heic, .removeMetadata = false}),
                                    cameraMetadata()),
              expected);
}

TEST(DestinationProperties, OfPngNeverNameAQuality)
{
    for (const double quality : {1.0, 82.0, 100.0}) {
        EXPECT_EQ(destinationProperties(settings({.outputFormat = OutputFormat::png, .quality = quality})),
                  DestinationProperties{});
    }
}

TEST(DestinationProperties, OfASourceWithoutAnyAreTheQualityAlone)
{
    EXPECT_EQ(
        destinationProperties(settings({.outputFormat = OutputFormat::original, .removeMetadata = false})),
        (DestinationProperties{{}, 0.82}));
}

TEST(DestinationProperties, MapQualityIntoItsRange)
{
    const auto mapped = [](double quality) {
        return *destinationProperties(settings({.outputFormat = OutputFormat::jpeg, .quality = quality}))
                    .lossyCompressionQuality;
    };
    EXPECT_DOUBLE_EQ(mapped(82), 0.82);
    EXPECT_DOUBLE_EQ(mapped(0), 0.01);
    EXPECT_DOUBLE_EQ(mapped(-5), 0.01);
    EXPECT_DOUBLE_EQ(mapped(150), 1.0);
    EXPECT_DOUBLE_EQ(mapped(std::numeric_limits<double>::quiet_NaN()), 1.0);
}

TEST(DestinationProperties, NameFullQualityForALosslessFormatOtherThanPng)
{
    EXPECT_EQ(destinationProperties(settings({.outputFormat = OutputFormat::webpLossless, .quality = 30})),
              (DestinationProperties{{}, 1.0}));
}

TEST(DestinationProperties, LeaveTheQualityOutWhenCompressionIsNotAskedFor)
{
    EXPECT_EQ(destinationProperties(settings({.outputFormat = OutputFormat::jpeg}), {}, false),
              DestinationProperties{});
}

TEST(DestinationProperties, LoseEachOfTheSevenGroupsOnItsOwn)
{
    Metadata metadata = cameraMetadata();
    for (const MetadataGroup group : metadataKeys) {
        const Metadata before = metadata;
        metadata.remove(group);
        EXPECT_NE(metadata, before) << static_cast<int>(group);
    }
    EXPECT_EQ(
        metadata,
        (Metadata{
            .xmp = "<x:xmpmeta/>", .orientation = 6, .colorModel = "RGB", .profileName = "Display P3"}));
}

} // namespace
} // namespace lumora
