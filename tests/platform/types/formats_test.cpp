// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "types/format.h"

#include "records/option_enums.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>

namespace lumora {
namespace {

using namespace std::string_literals;

std::string sniff(std::string_view bytes)
{
    const Format* format = formatOfContent(std::as_bytes(std::span(bytes)));
    return format ? std::string(format->identifier) : "none";
}

struct Sniffed
{
    const char* name;
    std::string head;
    std::string_view identifier;
};

void PrintTo(const Sniffed& c, std::ostream* out)
{
    *out << c.name;
}

// A box of the type "ftyp" with a major brand and more brands.
std::string ftyp(std::string_view major, std::string_view compatible)
{
    return "\0\0\0"s + static_cast<char>(16 + compatible.size()) + "ftyp" + std::string(major) + "\0\0\0\0"s +
           std::string(compatible);
}

class Sniffing : public testing::TestWithParam<Sniffed>
{
};

TEST_P(Sniffing, DecidesByTheFirstBytes)
{
    EXPECT_EQ(sniff(GetParam().head), GetParam().identifier);
}

INSTANTIATE_TEST_SUITE_P(
    , Sniffing,
    testing::Values(
        Sniffed{"Jpeg", "\xFF\xD8\xFF\xE0"s, "public.jpeg"},
        Sniffed{"Png", "\x89PNG\r\n\x1A\n"s, "public.png"}, Sniffed{"Gif87", "GIF87a"s, "com.compuserve.gif"},
        Sniffed{"Gif89", "GIF89a"s, "com.compuserve.gif"},
        Sniffed{"TiffLittleEndian", "II*\0"s, "public.tiff"},
        Sniffed{"TiffBigEndian", "MM\0*"s, "public.tiff"},
        Sniffed{"BigTiffLittleEndian", "II+\0"s, "public.tiff"},
        Sniffed{"BigTiffBigEndian", "MM\0+"s, "public.tiff"},
        Sniffed{"WebP", "RIFF\1\2\3\4WEBPVP8 "s, "org.webmproject.webp"},
        Sniffed{"Bmp", "BM\x46\0\0\0\0\0\0\0\x36\0\0\0\x28\0\0\0"s, "com.microsoft.bmp"},
        Sniffed{"Heic", ftyp("heic", "mif1heic"), "public.heic"},
        Sniffed{"HeicUnderTheGeneralBrand", ftyp("mif1", "mif1heic"), "public.heic"},
        Sniffed{"Heif", ftyp("mif1", "mif1"), "public.heif"},
        Sniffed{"Avif", ftyp("avif", "mif1miaf"), "public.avif"},
        Sniffed{"AvifUnderTheGeneralBrand", ftyp("mif1", "miafavif"), "public.avif"},
        Sniffed{"BrandAfterTheBox", ftyp("mif1", "mif1") + "heic", "public.heif"},
        Sniffed{"MinorVersionIsNoBrand", "\0\0\0\x14"s + "ftypmif1" + "heic" + "miaf", "public.heif"},
        Sniffed{"OtherMedia", ftyp("isom", "isommp42"), "none"}, Sniffed{"Empty", "", "none"},
        Sniffed{"OneByte", "\xFF"s, "none"},
        Sniffed{"Text", "BM is how this text begins, no picture"s, "none"},
        Sniffed{"OtherRiff", "RIFF\1\2\3\4WAVEfmt "s, "none"},
        Sniffed{"RiffCutOff", "RIFF\1\2\3\4WEB"s, "none"}, Sniffed{"PngCutOff", "\x89PNG\r\n\x1A"s, "none"},
        Sniffed{"Pdf", "%PDF-1.7"s, "none"},
        Sniffed{"Svg", "<svg xmlns='http://www.w3.org/2000/svg'/>"s, "none"},
        Sniffed{"Exr", "\x76\x2F\x31\x01\2\0\0\0"s, "none"}, Sniffed{"Script", "#!/bin/sh\n"s, "none"},
        Sniffed{"Photoshop", "8BPS\0\1"s, "none"}, Sniffed{"Jpeg2000", "\0\0\0\x0CjP  \r\n\x87\n"s, "none"}),
    [](const auto& test) { return test.param.name; });

TEST(Formats, AreKnownByTheirIdentifiers)
{
    std::set<std::string_view> identifiers;
    for (const Format* format : formats()) {
        EXPECT_EQ(formatWithIdentifier(format->identifier), format);
        EXPECT_TRUE(identifiers.insert(format->identifier).second) << format->identifier;
        EXPECT_FALSE(format->preferredExtension.empty() || format->preferredExtension.starts_with('.'));
    }
    EXPECT_EQ(formatWithIdentifier("com.adobe.pdf"), nullptr);
    EXPECT_EQ(formatWithIdentifier(""), nullptr);
}

TEST(Formats, AreWrittenWhenAnEncoderIsBuiltIn)
{
    const std::set<std::string_view> writable{"public.jpeg", "public.png",        "com.compuserve.gif",
                                              "public.tiff", "com.microsoft.bmp", "public.heic"};
    for (const Format* format : formats()) {
        EXPECT_EQ(format->writtenBy == WrittenBy::codec, writable.contains(format->identifier))
            << format->identifier;
    }
}

TEST(Formats, AreTakenInUnderTheirCustomaryExtensionsAndNoOthers)
{
    std::multiset<std::string_view> extensions;
    for (const Format* format : formats())
        extensions.insert(format->extensions.begin(), format->extensions.end());
    EXPECT_EQ(extensions, (std::multiset<std::string_view>{"bmp", "gif", "heic", "heif", "jpeg", "jpg", "png",
                                                           "tif", "tiff", "webp"}));
}

TEST(Formats, HaveRowsThatAgreeWithThemselves)
{
    const auto isLowerCase = [](std::string_view text) {
        return !text.empty() && std::ranges::all_of(text, [](unsigned char c) {
            return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9');
        });
    };
    for (const Format* format : formats()) {
        SCOPED_TRACE(format->identifier);
        EXPECT_TRUE(isLowerCase(format->preferredExtension));
        for (const std::string_view extension : format->extensions)
            EXPECT_TRUE(isLowerCase(extension)) << extension;
        if (!format->extensions.empty()) {
            EXPECT_TRUE(std::ranges::count(format->extensions, format->preferredExtension));
        }
        EXPECT_NE(format->begins, nullptr);
    }
}

TEST(Formats, AreCalledByMimeTypesOfTheirOwn)
{
    std::set<std::string_view> types;
    for (const Format* format : formats()) {
        EXPECT_FALSE(format->mimeTypes.empty()) << format->identifier;
        for (const std::string_view type : format->mimeTypes) {
            EXPECT_TRUE(type.starts_with("image/")) << type;
            EXPECT_TRUE(types.insert(type).second) << type;
        }
    }
}

TEST(Formats, HoldNothingWhereNobodyWritesThem)
{
    for (const Format* format : formats()) {
        const StorageLimits& limits = format->limits;
        SCOPED_TRACE(format->identifier);
        if (format->writtenBy == WrittenBy::nobody) {
            EXPECT_FALSE(limits.holdsSixteenBits || limits.holdsGray || limits.holdsInk ||
                         limits.holdsAlpha || limits.holdsAnyModel);
            EXPECT_EQ(limits.profiles, ProfileStorage::none);
        }
        // An edge as long as a cheap camera's, or none: what is refused must be rare.
        EXPECT_TRUE(limits.longestEdge == 0 || limits.longestEdge >= 16383) << limits.longestEdge;
        // Inks and other models mean nothing without the profile that explains them.
        if (limits.holdsInk || limits.holdsAnyModel) {
            EXPECT_EQ(limits.profiles, ProfileStorage::any);
        }
    }
}

// The options name the types that they write in words of their own, which lie below this table.
TEST(Formats, HoldWhatTheOutputOptionsName)
{
    for (const OutputFormat option : allCases<OutputFormat>) {
        const auto identifier = utiIdentifier(option);
        if (!identifier) continue;
        const Format* format = formatWithIdentifier(*identifier);
        ASSERT_NE(format, nullptr) << *identifier;
        EXPECT_EQ(format->writtenBy, isWebP(option) ? WrittenBy::externalEncoder : WrittenBy::codec);
        EXPECT_TRUE(std::ranges::count(format->extensions, *fileExtension(option))) << *identifier;
    }
}

} // namespace
} // namespace lumora
