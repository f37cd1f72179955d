// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "records/option_enums.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace lumora {
namespace {

using testing::ElementsAre;

template <class Enum>
std::vector<std::string> rawValues()
{
    std::vector<std::string> values;
    for (const Enum value : allCases<Enum>)
        values.emplace_back(rawValue(value));
    return values;
}

template <class Enum>
std::vector<std::string> titles()
{
    std::vector<std::string> values;
    for (const Enum value : allCases<Enum>)
        values.emplace_back(title(value));
    return values;
}

TEST(ResizeMode, ListsItsCasesWithNoResizingLast)
{
    EXPECT_THAT(rawValues<ResizeMode>(), ElementsAre("maxWidth", "maxHeight", "longestEdge", "none"));
    EXPECT_THAT(titles<ResizeMode>(), ElementsAre("Max Width", "Max Height", "Longest Edge", "No Resize"));
}

TEST(OutputFormat, ListsItsCasesInPickerOrder)
{
    EXPECT_THAT(rawValues<OutputFormat>(),
                ElementsAre("webp", "webpLossless", "jpeg", "png", "heic", "original"));
    EXPECT_THAT(titles<OutputFormat>(),
                ElementsAre("WebP Lossy", "WebP Lossless", "JPEG", "PNG", "HEIC", "Original Format"));
}

TEST(DestinationMode, ListsItsCases)
{
    EXPECT_THAT(rawValues<DestinationMode>(), ElementsAre("originalLocation", "selectedFolder"));
    EXPECT_THAT(titles<DestinationMode>(), ElementsAre("Original Location", "Selected Folder"));
}

template <class Enum>
class OptionEnum : public testing::Test
{
};

using OptionEnums = testing::Types<ResizeMode, OutputFormat, DestinationMode>;
TYPED_TEST_SUITE(OptionEnum, OptionEnums);

TYPED_TEST(OptionEnum, IsNumberedFromZeroInOneByte)
{
    EXPECT_EQ(sizeof(TypeParam), 1U);
    for (std::size_t i = 0; i < allCases<TypeParam>.size(); ++i) {
        EXPECT_EQ(static_cast<std::size_t>(allCases<TypeParam>[i]), i);
    }
}

TYPED_TEST(OptionEnum, IsFoundByItsExactRawValueOnly)
{
    for (const TypeParam value : allCases<TypeParam>) {
        const std::string raw(rawValue(value));
        EXPECT_EQ(fromRawValue<TypeParam>(raw), value);
        EXPECT_EQ(fromRawValue<TypeParam>(raw + " "), std::nullopt);
        EXPECT_EQ(fromRawValue<TypeParam>(" " + raw), std::nullopt);
        EXPECT_EQ(fromRawValue<TypeParam>(title(value)), std::nullopt);
    }
    EXPECT_EQ(fromRawValue<TypeParam>(""), std::nullopt);
}

TEST(OutputFormat, IsNotFoundByAnotherCaseOrAnExtension)
{
    EXPECT_EQ(fromRawValue<OutputFormat>("WEBP"), std::nullopt);
    EXPECT_EQ(fromRawValue<OutputFormat>("jpg"), std::nullopt);
    EXPECT_EQ(fromRawValue<OutputFormat>("webpLossless"), OutputFormat::webpLossless);
}

struct FormatCase
{
    OutputFormat format;
    std::optional<std::string_view> extension;
    std::optional<std::string_view> identifier;
    bool isWebP;
    bool isLosslessOnly;
};

void PrintTo(const FormatCase& c, std::ostream* out)
{
    *out << rawValue(c.format);
}

class OutputFormatTraits : public testing::TestWithParam<FormatCase>
{
};

TEST_P(OutputFormatTraits, DecideEncoderExtensionAndQuality)
{
    const FormatCase& expected = GetParam();
    EXPECT_EQ(fileExtension(expected.format), expected.extension);
    EXPECT_EQ(utiIdentifier(expected.format), expected.identifier);
    EXPECT_EQ(isWebP(expected.format), expected.isWebP);
    EXPECT_EQ(isLosslessOnly(expected.format), expected.isLosslessOnly);
}

INSTANTIATE_TEST_SUITE_P(
    , OutputFormatTraits,
    testing::Values(FormatCase{OutputFormat::webp, "webp", "org.webmproject.webp", true, false},
                    FormatCase{OutputFormat::webpLossless, "webp", "org.webmproject.webp", true, true},
                    FormatCase{OutputFormat::jpeg, "jpg", "public.jpeg", false, false},
                    FormatCase{OutputFormat::png, "png", "public.png", false, true},
                    FormatCase{OutputFormat::heic, "heic", "public.heic", false, false},
                    FormatCase{OutputFormat::original, std::nullopt, std::nullopt, false, false}),
    [](const auto& test) { return std::string(rawValue(test.param.format)); });

} // namespace
} // namespace lumora
