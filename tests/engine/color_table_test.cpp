// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Every kind of source by every output and colour setting: what the output looks like is what the source
// looked like, by a computation that shares nothing with the product's.
#include "tests/engine/optimizer_test.h"
#include "tests/support/color_patches.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <utility>

namespace lumora {
namespace {

using test::Colors;
using test::Model;
using test::PatchFile;
using test::Profile;

const Colors grays{{0}, {0.004}, {0.05}, {0.2}, {0.5}, {0.75}, {1}};
const Colors colors{{0, 0, 0},       {1, 1, 1},       {0.02, 0.02, 0.02}, {0.5, 0.5, 0.5},  {0.8, 0.4, 0.3},
                    {0.3, 0.6, 0.4}, {0.2, 0.3, 0.7}, {0.9, 0.85, 0.2},   {0.1, 0.05, 0.02}};
const Colors mixed{{0.8, 0.4, 0.3, 1}, {0.45, 0.6, 0.5, 0.75}, {0.4, 0.45, 0.7, 0.502}, {0.5, 0.5, 0.5, 0}};
const Colors inks{{0, 0, 0, 0}, {1, 0, 0, 0},       {0, 1, 0, 0},       {0, 0, 1, 0},
                  {0, 0, 0, 1}, {0.3, 0.2, 0.2, 0}, {0.1, 0.6, 0.7, 0}, {0.6, 0.5, 0.5, 0.6}};
const Colors labs{{0, 0, 0}, {100, 0, 0}, {50, 0, 0}, {60, 30, 20}, {40, -20, 15}, {35, 10, -35}};

Profile displayP3()
{
    return test::rgbProfile(0.68, 0.32, 0.265, 0.69, 0.15, 0.06, 0);
}
Profile adobeLike()
{
    return test::rgbProfile(0.64, 0.33, 0.21, 0.71, 0.15, 0.06, 2.19921875);
}
Profile proPhotoLike()
{
    return test::rgbProfile(0.7347, 0.2653, 0.1596, 0.8404, 0.0366, 0.0001, 1.8);
}
Profile srgbLike(double exponent)
{
    return test::rgbProfile(0.64, 0.33, 0.30, 0.60, 0.15, 0.06, exponent);
}

struct Source
{
    const char* name; // of the test and, behind the last underscore, the extension
    PatchFile patches;
    // What its numbers mean where that is not said by a profile in the file.
    Profile meaning = {};
    std::function<void(const std::filesystem::path&)> change = {};
};

void PrintTo(const Source& source, std::ostream* out)
{
    *out << source.name;
}

auto chunk(const char* type, const std::vector<std::uint32_t>& numbers)
{
    return [=](const std::filesystem::path& png) {
        test::insertChunk(png, type, test::bigEndianNumbers(numbers));
    };
}

auto codes(unsigned char primaries, unsigned char transfer)
{
    return [=](const std::filesystem::path& png) {
        test::insertChunk(png, "cICP",
                          {static_cast<char>(primaries), static_cast<char>(transfer), '\0', '\1'});
    };
}

void describeAdobeLike(const std::filesystem::path& png)
{
    test::insertChunk(png, "cHRM",
                      test::bigEndianNumbers({31270, 32900, 64000, 33000, 21000, 71000, 15000, 6000}));
    test::insertChunk(png, "gAMA", test::bigEndianNumbers({45455}));
}

std::vector<Source> sources()
{
    return {
        {"Plain_png", {Model::rgb, colors}},
        {"Deep_png", {Model::rgb, colors, 16}},
        {"P3_png", {.colors = colors, .profile = displayP3()}},
        {"P3_jpg", {.colors = colors, .profile = displayP3()}},
        {"Adobe_tif", {.colors = colors, .profile = adobeLike()}},
        {"ProPhoto_tif", {.colors = colors, .profile = proPhotoLike()}},
        {"DeepProPhoto_tif", {.colors = colors, .bits = 16, .profile = proPhotoLike()}},
        {"DeepLinear_png", {.colors = colors, .bits = 16, .profile = srgbLike(1)}},
        {"Linear_png", {.colors = colors, .profile = srgbLike(1)}},
        {"Gray_png", {Model::gray, grays}},
        {"Gray_jpg", {Model::gray, grays}},
        {"DeepGray_png", {Model::gray, grays, 16}},
        {"GrayProfile_png", {.model = Model::gray, .colors = grays, .profile = test::grayProfile(1.8)}},
        {"GrayProfile_jpg", {.model = Model::gray, .colors = grays, .profile = test::grayProfile(1.8)}},
        {"DeepLinearGray_tif",
         {.model = Model::gray, .colors = grays, .bits = 16, .profile = test::grayProfile(1)}},
        {"GrayWithColourProfile_jpg", {.model = Model::gray, .colors = grays, .profile = displayP3()}},
        {"Inks_tif", {Model::cmyk, inks}},
        {"Inks_jpg", {Model::cmyk, inks}},
        {"DeepInks_tif", {Model::cmyk, inks, 16}},
        {"InksProfile_tif", {.model = Model::cmyk, .colors = inks, .profile = test::inkProfile()}},
        {"InksProfile_jpg", {.model = Model::cmyk, .colors = inks, .profile = test::inkProfile()}},
        {"Lab_tif", {Model::lab, labs}},
        {"DeepLab_tif", {Model::lab, labs, 16}},
        {"Alpha_png", {.colors = mixed, .hasAlpha = true}},
        {"AlphaP3_png", {.colors = mixed, .hasAlpha = true, .profile = displayP3()}},
        {"DeepAlphaP3_png", {.colors = mixed, .bits = 16, .hasAlpha = true, .profile = displayP3()}},
        {"AssociatedAlphaP3_tif",
         {.colors = mixed, .hasAlpha = true, .isAssociated = true, .profile = displayP3()}},
        {"GammaOne_png", {.colors = colors}, srgbLike(1), chunk("gAMA", {100000})},
        {"DeepGammaOne_png", {.colors = colors, .bits = 16}, srgbLike(1), chunk("gAMA", {100000})},
        {"GrayGammaOne_png", {Model::gray, grays}, test::grayProfile(1), chunk("gAMA", {100000})},
        {"GammaOfSrgb_png", {.colors = colors}, {}, chunk("gAMA", {45455})},
        {"GammaAndPrimaries_png", {.colors = colors}, adobeLike(), describeAdobeLike},
        {"CodesOfP3_png", {.colors = colors}, displayP3(), codes(12, 13)},
        {"CodesOfTelevision_png",
         {.colors = colors},
         test::rgbProfile(0.708, 0.292, 0.170, 0.797, 0.131, 0.046, 0),
         codes(9, 14)},
        {"CodesOverProfile_png", {.colors = colors, .profile = adobeLike()}, displayP3(), codes(12, 13)},
        {"ProfileOverGamma_png", {.colors = colors, .profile = displayP3()}, {}, chunk("gAMA", {100000})},
    };
}

class ColorTable : public test::OptimizerTest, public testing::WithParamInterface<Source>
{
protected:
    std::filesystem::path sourceFile()
    {
        const std::string name = GetParam().name;
        const std::size_t end = name.rfind('_');
        auto file = m_in / (name.substr(0, end) + "." + name.substr(end + 1));
        savePatches(file, m_source);
        if (GetParam().change) GetParam().change(file);
        if (m_source.isAssociated) m_source.colors = test::loadPatches(file).colors;
        if (!GetParam().meaning.empty()) m_source.profile = GetParam().meaning;
        return file;
    }

    using Settings = std::vector<std::pair<bool, bool>>; // sRGB, profile removed
    static Settings settingsFor(bool isQuick)
    {
        return isQuick ? Settings{{true, true}, {true, false}, {false, true}, {false, false}}
                       : Settings{{true, true}, {false, false}};
    }

    static Colors componentsOf(const PatchFile& patches)
    {
        Colors components = patches.colors;
        for (test::Color& color : components) {
            for (double& value : color)
                value *= 255;
            color.resize(std::max<std::size_t>(color.size(), 4), 255);
        }
        return components;
    }

    // The first component that is off by more than the bound: in sRGB, or in the source's own space where the
    // output has kept it.
    std::string differenceOf(const PatchFile& output, double bound) const
    {
        const bool isUnconverted = !output.profile.empty() && output.profile == m_source.profile;
        const Colors wanted = isUnconverted ? componentsOf(m_source) : inSrgb(m_source);
        const Colors found = isUnconverted ? componentsOf(output) : inSrgb(output);
        if (m_source.hasAlpha && !output.hasAlpha) return {}; // laid over something
        for (std::size_t i = 0; i < wanted.size(); ++i) {
            const bool isSeen = !m_source.hasAlpha || wanted[i][3] > 0;
            for (std::size_t c = isSeen ? 0 : 3; c < 4; ++c) {
                if (std::abs(wanted[i][c] - found.at(i)[c]) > bound) {
                    return "patch " + std::to_string(i) + " component " + std::to_string(c) + ": " +
                           std::to_string(found[i][c]) + " for " + std::to_string(wanted[i][c]);
                }
            }
        }
        return {};
    }

    PatchFile m_source = GetParam().patches;
};

// Rounding to 8 bits twice, and of what transparency has multiplied once more.
constexpr double losslessBound = 1.5;
constexpr double losslessAlphaBound = 2.5;
// JPEG and HEIC at their best.
constexpr double lossyBound = 4;

TEST_P(ColorTable, LooksTheSameInEveryOutput)
{
    const auto file = sourceFile();
    const bool isLossySource = file.extension() == ".jpg";
    for (const OutputFormat format : {OutputFormat::jpeg, OutputFormat::png, OutputFormat::heic,
                                      OutputFormat::webpLossless, OutputFormat::original}) {
        const bool isLossless = format == OutputFormat::png || format == OutputFormat::webpLossless ||
                                (format == OutputFormat::original && !isLossySource);
        const double bound = !isLossless || isLossySource ? lossyBound
                             : m_source.hasAlpha          ? losslessAlphaBound
                                                          : losslessBound;
        const bool isQuick = isLossless || format == OutputFormat::original;
        for (const auto& [convertsToSrgb, removesProfile] : settingsFor(isQuick)) {
            const auto output = *optimize(file, {.resizeMode = ResizeMode::none,
                                                 .outputFormat = format,
                                                 .quality = 100,
                                                 .optimizeColorForSharing = convertsToSrgb,
                                                 .removeColorManagement = removesProfile,
                                                 .filenamePrefix = "out-"})
                                     .outputURL;
            const PatchFile found = test::loadPatches(output);
            EXPECT_EQ(differenceOf(found, bound), "")
                << rawValue(format) << " " << convertsToSrgb << removesProfile;
            EXPECT_TRUE(!removesProfile || found.profile.empty()) << rawValue(format);
            EXPECT_TRUE(isDescribed(found) || found.profile == m_source.profile) << rawValue(format);
            EXPECT_TRUE(isDescribed(found) || output.extension() != ".png");
        }
    }
}

TEST_P(ColorTable, LooksTheSameWhenReduced)
{
    const auto file = sourceFile();
    const double bound = file.extension() == ".jpg" ? lossyBound
                         : m_source.hasAlpha        ? losslessAlphaBound
                                                    : losslessBound;
    // In its own components a deep picture becomes one of 8 bits, whose shadows may be coarse.
    for (const bool convertsToSrgb : {true, m_source.bits == 16}) {
        const auto output =
            *optimize(file, {.maximumPixels = static_cast<std::int64_t>(m_source.colors.size()) * 8,
                             .outputFormat = OutputFormat::png,
                             .optimizeColorForSharing = convertsToSrgb,
                             .removeColorManagement = false})
                 .outputURL;
        EXPECT_EQ(differenceOf(test::loadPatches(output, 0.5), bound), "") << convertsToSrgb;
    }
}

INSTANTIATE_TEST_SUITE_P(Sources, ColorTable, testing::ValuesIn(sources()),
                         [](const auto& source) { return std::string(source.param.name); });

} // namespace
} // namespace lumora
