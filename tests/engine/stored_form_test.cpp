// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How the components of a picture that is not redrawn are stored.
#include "engine/image_optimizer.h"
#include "tests/engine/local_services.h"
#include "tests/support/program_output.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

struct StoredCase
{
    const char* name;
    test::Pixels pixels;
    test::SaveOptions options;
};

void PrintTo(const StoredCase& c, std::ostream* out)
{
    *out << c.name;
}

test::Pixels grayStripes(int values)
{
    test::Pixels pixels{32, 32, 1, {}};
    for (int i = 0; i < 32 * 32; ++i)
        pixels.bytes.push_back(static_cast<std::uint8_t>(i / 7 % values * (255 / (values - 1))));
    return pixels;
}

ProcessingResult optimizedAsItIs(const std::filesystem::path& source)
{
    return ImageOptimizer::optimize(source,
                                    test::settings({.resizeMode = ResizeMode::none,
                                                    .outputFormat = OutputFormat::original,
                                                    .optimizeColorForSharing = false,
                                                    .removeColorManagement = false,
                                                    .filenameSuffix = "-out"}),
                                    test::localServices());
}

class NotRedrawnPng : public testing::TestWithParam<StoredCase>
{
protected:
    // The depth and the colour type stand in the header.
    static std::string formOf(const std::filesystem::path& png) { return test::readBytes(png).substr(24, 2); }

    test::TemporaryDirectory m_folder;
};

TEST_P(NotRedrawnPng, KeepsItsFormAndDoesNotGrow)
{
    const auto source = m_folder / "a.png";
    test::save(source, GetParam().pixels, GetParam().options);
    const auto result = optimizedAsItIs(source);
    EXPECT_EQ(formOf(*result.outputURL), formOf(source));
    EXPECT_LE(result.outputBytes, result.originalBytes);
    EXPECT_EQ(test::load(*result.outputURL).bytes, test::load(source).bytes);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, NotRedrawnPng,
    testing::Values(StoredCase{"PaletteOf256", test::corneredPicture(64, 48), {.palette = true}},
                    StoredCase{"PaletteOf16", test::corneredPicture(64, 48), {.palette = true, .bits = 4}},
                    StoredCase{"Gray1Bit", grayStripes(2), {.bits = 1}},
                    StoredCase{"Gray2Bits", grayStripes(4), {.bits = 2}},
                    StoredCase{"Gray4Bits", grayStripes(16), {.bits = 4}},
                    StoredCase{"Gray8Bits", grayStripes(2), {}},
                    StoredCase{"Gray16Bits", grayStripes(256), {.sixteenBits = true}},
                    StoredCase{"Rgb", test::uniformPicture(9, 9, {1, 2, 3}), {}}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(NotRedrawnTiff, StaysBlackAndWhite)
{
    const test::TemporaryDirectory folder;
    test::save(folder / "a.tif", grayStripes(2), {.bits = 1});
    const auto result = optimizedAsItIs(folder / "a.tif");
    EXPECT_EQ(test::tagOf(*result.outputURL, "BitsPerSample"), "1\n");
    EXPECT_EQ(test::load(*result.outputURL).bytes, grayStripes(2).bytes);

    test::save(folder / "b.tif", grayStripes(16));
    EXPECT_EQ(test::tagOf(*optimizedAsItIs(folder / "b.tif").outputURL, "BitsPerSample"), "8\n");
}

} // namespace
} // namespace lumora
