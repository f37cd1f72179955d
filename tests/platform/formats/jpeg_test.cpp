// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/row_reader.h"
#include "tests/platform/formats/written_pictures.h"

#include <gmock/gmock.h>

#include <cmath>

namespace lumora {
namespace {

// A large JPEG that is wanted much smaller may be decoded at a reduced size; nobody must see it.
class ReducedDecodingTest : public testing::TestWithParam<int>
{
protected:
    Result<Image> drawn(const std::string& name, std::int64_t width, std::int64_t height,
                        Orientation orientation = 1) const
    {
        const auto source = ImageSource::open(m_folder / name);
        if (!source) return source.error();
        const auto drawing =
            draw(source->image().withPendingOrientation(orientation), {width, height, ColorSpace::deviceRGB});
        return drawing ? decode(*drawing) : drawing;
    }

    test::TemporaryDirectory m_folder;
};

std::vector<std::uint8_t> pixelsOf(const Image& image)
{
    auto rows = RowReader::open(image);
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(rows->width() * rows->height() * 4));
    EXPECT_TRUE(rows->read(0, rows->height(), bytes.data()));
    return bytes;
}

double decibels(const std::vector<std::uint8_t>& a, const std::vector<std::uint8_t>& b)
{
    double sum = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    return 10 * std::log10(255 * 255 * static_cast<double>(a.size()) / (sum + 1e-9));
}

// The same pixels in a PNG are always decoded whole. Odd sizes end within a reduced pixel.
TEST_P(ReducedDecodingTest, GivesThePictureOfTheFullOne)
{
    const test::Pixels picture = test::corneredPicture(1571, 1203);
    test::save(m_folder / "a.jpg", picture);
    test::save(m_folder / "a.png", picture);
    const std::int64_t width = 1571 / GetParam();
    const std::int64_t height = 1203 / GetParam();

    const auto reduced = drawn("a.jpg", width, height);
    const auto full = drawn("a.png", width, height);

    ASSERT_TRUE(reduced);
    EXPECT_EQ(reduced->width(), width);
    EXPECT_EQ(reduced->height(), height);
    EXPECT_GE(decibels(pixelsOf(*reduced), pixelsOf(*full)), 42);
}

INSTANTIATE_TEST_SUITE_P(Reductions, ReducedDecodingTest, testing::Values(3, 4, 5, 8, 9, 16, 19));

TEST_F(ReducedDecodingTest, TurnsThePictureUpright)
{
    const test::Pixels picture = test::corneredPicture(1571, 1203);
    test::save(m_folder / "a.jpg", picture);
    test::save(m_folder / "a.png", picture);

    const auto reduced = drawn("a.jpg", 150, 196, 6);
    const auto full = drawn("a.png", 150, 196, 6);

    ASSERT_TRUE(reduced);
    EXPECT_GE(decibels(pixelsOf(*reduced), pixelsOf(*full)), 42);
}

TEST_F(ReducedDecodingTest, NoticesMissingData)
{
    test::save(m_folder / "a.jpg", test::corneredPicture(1571, 1203));
    std::filesystem::resize_file(m_folder / "a.jpg", std::filesystem::file_size(m_folder / "a.jpg") * 9 / 10);

    EXPECT_FALSE(drawn("a.jpg", 100, 76));
}

class Jpeg : public test::WrittenPictures
{
protected:
    // The markers of the segments before the picture.
    static std::vector<int> markersIn(const std::string& jpeg)
    {
        const auto byteAt = [&](std::size_t at) { return int{static_cast<unsigned char>(jpeg.at(at))}; };
        std::vector<int> markers;
        for (std::size_t at = 2; byteAt(at) == 0xFF && byteAt(at + 1) >= 0xE0;
             at += static_cast<std::size_t>(byteAt(at + 2) * 256 + byteAt(at + 3)) + 2)
            markers.push_back(byteAt(at + 1));
        return markers;
    }
};

TEST_F(Jpeg, StoresColourAtFullResolutionFromQualityNinetyOn)
{
    const Image image = redrawn(test::corneredPicture(64, 64));
    const auto samplingOf = [](const std::filesystem::path& jpeg) {
        const std::string bytes = test::readBytes(jpeg);
        const std::size_t frame = bytes.find("\xFF\xC2"); // progressive
        EXPECT_NE(frame, std::string::npos);
        return static_cast<int>(static_cast<unsigned char>(bytes.at(frame + 11)));
    };
    EXPECT_EQ(samplingOf(written(image, "public.jpeg", 0.89)), 0x22);
    EXPECT_EQ(samplingOf(written(image, "public.jpeg", 0.90)), 0x11);
}

TEST_F(Jpeg, IsSmallerAtLowerQuality)
{
    const Image image = redrawn(test::corneredPicture(256, 256));
    EXPECT_LT(std::filesystem::file_size(written(image, "public.jpeg", 0.3)),
              std::filesystem::file_size(written(image, "public.jpeg", 0.85)));
}

TEST_F(Jpeg, HoldsMetadataOfAllKinds)
{
    Metadata metadata = test::someMetadata();
    metadata.jfifDensity = {300, 150};
    const auto source =
        ImageSource::open(written(redrawn(test::corneredPicture(16, 12)), "public.jpeg", 0.82, metadata));
    ASSERT_TRUE(source);
    test::expectSomeMetadata(source->metadata());
    EXPECT_EQ(source->metadata().jfifDensity, (Resolution{300, 150}));
}

TEST_F(Jpeg, BeginsWithItsDensityAndHasEachBlockOnce)
{
    const Image image = redrawn(test::corneredPicture(16, 12));
    EXPECT_THAT(markersIn(test::readBytes(written(image, "public.jpeg"))), testing::ElementsAre(0xE0));
    EXPECT_THAT(markersIn(test::readBytes(written(image, "public.jpeg", 0.82, test::someMetadata()))),
                testing::ElementsAre(0xE0, 0xE1, 0xE1, 0xED));
}

// The header speaks of brightness and colour differences, which ink has not.
TEST_F(Jpeg, OfInkHasNoJfifHeader)
{
    const Image ink = asStored(test::uniformPicture(8, 8, {10, 20, 30, 40}),
                               {.profile = "cmyk", .inkToCmyk = true}, "source.jpg");
    const std::string jpeg = test::readBytes(written(ink, "public.jpeg"));
    EXPECT_THAT(jpeg, testing::Not(testing::HasSubstr("JFIF")));
    EXPECT_EQ(test::inspect(m_folder / "out1").bands, 4);
}

TEST_F(Jpeg, LeavesOutABlockThatFitsIntoNoSegment)
{
    Metadata metadata = test::someMetadata();
    metadata.xmp.replace(metadata.xmp.find("some words"), 4, std::string(70'000, 'x'));
    const auto source =
        ImageSource::open(written(redrawn(test::corneredPicture(16, 12)), "public.jpeg", 0.82, metadata));
    ASSERT_TRUE(source);
    EXPECT_EQ(source->metadata().xmp, "");
    EXPECT_EQ(test::valueOf(source->metadata().iptc, "Iptc.Application2.Keywords"), "harbour");
    EXPECT_EQ(test::load(m_folder / "out1").width, 16);
}

} // namespace
} // namespace lumora
