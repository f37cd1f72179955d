// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files of every readable format, cut off or with single bits turned: each is unreadable or gives a whole
// picture, nothing between.
#include "engine/image_optimizer.h"
#include "records/errors.h"
#include "tests/engine/local_services.h"
#include "tests/support/encoded_bmp.h"
#include "tests/support/fake_encoder.h"
#include "tests/support/sample_images.h"
#include "tests/support/settings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace lumora {
namespace {

struct Sample
{
    const char* name;
    const char* file;
    test::SaveOptions options = {};
};

void PrintTo(const Sample& sample, std::ostream* out)
{
    *out << sample.name;
}

void saveBmp(const std::filesystem::path& file, const test::Pixels& pixels)
{
    const auto bmp =
        test::encodedBmp(pixels.width, pixels.height, pixels.bands, std::as_bytes(std::span(pixels.bytes)));
    std::string bytes(bmp.size(), '\0');
    std::ranges::transform(bmp, bytes.begin(), [](std::byte b) { return std::to_integer<char>(b); });
    test::writeText(file, bytes);
}

class DamagedFile : public test::EncoderTest, public testing::WithParamInterface<Sample>
{
protected:
    DamagedFile()
    {
        std::filesystem::create_directories(m_source.parent_path());
        const test::Pixels picture = test::corneredPicture(48, 36);
        if (m_source.extension() == ".bmp") {
            saveBmp(m_source, picture);
        } else {
            test::save(m_source, picture, GetParam().options);
        }
        m_whole = test::readBytes(m_source);
    }

    // The picture that becomes of the file; none when it is unreadable. Whatever else comes of it is a
    // failure.
    std::optional<test::Pixels> pictureOf(const std::string& bytes)
    {
        test::writeText(m_source, bytes);
        test::writeText(m_output, "an earlier output");
        try {
            const auto result = ImageOptimizer::optimize(
                m_source, test::settings({.outputFormat = OutputFormat::png, .filenameSuffix = "-out"}),
                test::localServices());
            EXPECT_EQ(*result.outputURL, m_output);
            expectNothingElse(bytes);
            return test::load(m_output);
        } catch (const ImageOptimizerError& error) {
            EXPECT_EQ(error.kind(), ImageOptimizerError::Kind::unreadableImage) << error.what();
            EXPECT_EQ(test::readBytes(m_output), "an earlier output");
            expectNothingElse(bytes);
        }
        return std::nullopt;
    }

    void expectNothingElse(const std::string& bytes)
    {
        EXPECT_EQ(test::readBytes(m_source), bytes);
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(m_source.parent_path()), {}), 2);
        EXPECT_TRUE(std::filesystem::is_empty(m_temporary));
    }

    std::string withTurnedBit(std::mt19937& random) const
    {
        // Headers are short and decide most.
        constexpr std::size_t head = 160;
        const std::size_t end = random() % 2 == 0 ? std::min(head, m_whole.size()) : m_whole.size();
        std::string bytes = m_whole;
        char& byte = bytes[random() % end];
        byte = static_cast<char>(static_cast<unsigned char>(byte) ^ 1U << random() % 8);
        return bytes;
    }

    std::filesystem::path m_source = m_folder / "in" / GetParam().file;
    std::filesystem::path m_output = m_folder / "in" / "a-out.png";
    std::string m_whole;
};

TEST_P(DamagedFile, ThatIsCutOffIsUnreadableUnlessThePictureIsWhole)
{
    const auto picture = pictureOf(m_whole);
    ASSERT_TRUE(picture);
    constexpr std::size_t steps = 60;
    int unreadable = 0;
    for (std::size_t step = 0; step < steps; ++step) {
        const std::size_t length = m_whole.size() * step / steps;
        const auto remains = pictureOf(m_whole.substr(0, length));
        if (remains) {
            EXPECT_EQ(remains->bytes, picture->bytes) << length << " of " << m_whole.size();
        } else {
            ++unreadable;
        }
    }
    EXPECT_GE(unreadable, 45);
}

TEST_P(DamagedFile, WithATurnedBitIsUnreadableOrGivesAWholePicture)
{
    constexpr unsigned seed = 20;
    constexpr int attempts = 150;
    std::mt19937 random(seed);
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const auto picture = pictureOf(withTurnedBit(random));
        EXPECT_TRUE(!picture || picture->width * picture->height > 0) << attempt;
    }
}

INSTANTIATE_TEST_SUITE_P(
    Formats, DamagedFile,
    testing::Values(Sample{"Jpeg", "a.jpg"}, Sample{"ProgressiveJpeg", "a.jpg", {.interlaced = true}},
                    Sample{"Png", "a.png"}, Sample{"InterlacedPng", "a.png", {.interlaced = true}},
                    Sample{"PalettePng", "a.png", {.palette = true}}, Sample{"Gif", "a.gif"},
                    Sample{"Tiff", "a.tif"}, Sample{"Bmp", "a.bmp"}, Sample{"Heic", "a.heic"},
                    Sample{"LossyWebP", "a.webp", {.lossy = true}}, Sample{"LosslessWebP", "a.webp"}),
    [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace lumora
