// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/destination_properties.h"

#include "tests/support/settings.h"

#include <gtest/gtest.h>

#include <limits>

namespace lumora {
namespace {

using ImageOptimizer::destinationProperties;
using ImageOptimizer::metadataKeys;
using test::settings;
using test::SettingsDraft;

ImageProperties cameraProperties()
{
    ImageProperties properties;
    for (const PropertyKey key : metadataKeys)
        properties[key] = MetadataGroup{{"some.entry", 2, "value"}};
    properties[PropertyKey::xmp] = std::string("<x:xmpmeta/>");
    properties[PropertyKey::orientation] = std::int64_t{6};
    properties[PropertyKey::colorModel] = std::string("RGB");
    properties[PropertyKey::profileName] = std::string("Display P3");
    properties[PropertyKey::pixelWidth] = std::int64_t{6000};
    return properties;
}

double qualityOf(const ImageProperties& properties)
{
    return std::get<double>(properties.at(PropertyKey::lossyCompressionQuality));
}

TEST(DestinationProperties, HoldAtMostTheQualityWhenMetadataGoes)
{
    const auto properties =
        destinationProperties(settings({.outputFormat = OutputFormat::jpeg}), cameraProperties());
    EXPECT_EQ(properties, (ImageProperties{{PropertyKey::lossyCompressionQuality, 0.82}}));
}

TEST(DestinationProperties, CarryEverythingButTheOrientationWhenMetadataStays)
{
    auto expected = cameraProperties();
    expected.erase(PropertyKey::orientation);
    expected[PropertyKey::lossyCompressionQuality] = 0.82;
    EXPECT_EQ(destinationProperties(settings({.outputFormat = OutputFormat::jpeg,
                                              .removeColorManagement = false,
                                              .removeMetadata = false}),
                                    cameraProperties()),
              expected);
}

TEST(DestinationProperties, LoseColourModelAndProfileNameWithColourManagement)
{
    auto expected = cameraProperties();
    for (const auto key : {PropertyKey::orientation, PropertyKey::colorModel, PropertyKey::profileName}) {
        expected.erase(key);
    }
    expected[PropertyKey::lossyCompressionQuality] = 0.82;
    EXPECT_EQ(destinationProperties(settings({.outputFormat = OutputFormat::heic, .removeMetadata = false}),
                                    cameraProperties()),
              expected);
}

TEST(DestinationProperties, OfPngNeverNameAQuality)
{
    for (const double quality : {1.0, 82.0, 100.0}) {
        EXPECT_TRUE(
            destinationProperties(settings({.outputFormat = OutputFormat::png, .quality = quality})).empty());
    }
}

TEST(DestinationProperties, OfASourceWithoutAnyAreTheQualityAlone)
{
    EXPECT_EQ(
        destinationProperties(settings({.outputFormat = OutputFormat::original, .removeMetadata = false})),
        (ImageProperties{{PropertyKey::lossyCompressionQuality, 0.82}}));
}

TEST(DestinationProperties, MapQualityIntoItsRange)
{
    const auto mapped = [](double quality) {
        return qualityOf(
            destinationProperties(settings({.outputFormat = OutputFormat::jpeg, .quality = quality})));
    };
    EXPECT_DOUBLE_EQ(mapped(82), 0.82);
    EXPECT_DOUBLE_EQ(mapped(0), 0.01);
    EXPECT_DOUBLE_EQ(mapped(-5), 0.01);
    EXPECT_DOUBLE_EQ(mapped(150), 1.0);
    EXPECT_DOUBLE_EQ(mapped(std::numeric_limits<double>::quiet_NaN()), 1.0);
}

TEST(DestinationProperties, NameFullQualityForALosslessFormatOtherThanPng)
{
    EXPECT_DOUBLE_EQ(qualityOf(destinationProperties(
                         settings({.outputFormat = OutputFormat::webpLossless, .quality = 30}))),
                     1.0);
}

TEST(DestinationProperties, LeaveTheQualityOutWhenCompressionIsNotAskedFor)
{
    EXPECT_TRUE(destinationProperties(settings({.outputFormat = OutputFormat::jpeg}), {}, false).empty());
}

} // namespace
} // namespace lumora
