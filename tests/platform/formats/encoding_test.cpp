// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "encoding.h"

#include "system/regular_file.h"

#include "tests/platform/formats/written_pictures.h"

#include <gmock/gmock.h>

namespace lumora {
namespace {

class Encoding : public test::WrittenPictures
{
protected:
    static Result<Bytes> encoded(std::string_view type, const Image& image, const Metadata& metadata = {})
    {
        const test::TemporaryDirectory folder;
        auto file = AtomicFile::create(folder / "encoded");
        EXPECT_TRUE(file);
        if (const auto status = encodeImage(*formatWithIdentifier(type), image, 82, metadata, *file); !status)
            return status.error();
        return *readAll(file->descriptor(), 1U << 24U);
    }
    std::filesystem::path saved(const Result<Bytes>& bytes)
    {
        std::string text;
        for (const std::byte b : *bytes)
            text += std::to_integer<char>(b);
        test::writeText(m_folder / "encoded", text);
        return m_folder / "encoded";
    }
};

TEST_F(Encoding, GivesAFileOfTheFormat)
{
    const Image image = redrawn(test::corneredPicture(24, 16));
    for (const Format* format : formats()) {
        if (format->writtenBy != WrittenBy::codec) continue;
        const auto bytes = encoded(format->identifier, image);
        ASSERT_TRUE(bytes) << format->identifier;
        const auto source = ImageSource::open(saved(bytes));
        ASSERT_TRUE(source) << format->identifier;
        EXPECT_EQ(source->typeIdentifier(), format->identifier);
        EXPECT_EQ(source->image().width(), 24) << format->identifier;
    }
}

TEST_F(Encoding, SaysThatNoCodecWritesTheFormat)
{
    const Image image = redrawn(test::uniformPicture(2, 2, {1, 2, 3}));
    for (const char* type : {"org.webmproject.webp", "public.avif", "public.heif"}) {
        const auto bytes = encoded(type, image);
        ASSERT_FALSE(bytes) << type;
        EXPECT_EQ(bytes.error().description, "no encoder for this type");
    }
}

TEST_F(Encoding, SaysHowLongAnEdgeMayBe)
{
    const Image tall = redrawn(test::uniformPicture(1, 16385, {1, 2, 3}));
    const Image wide = redrawn(test::uniformPicture(65501, 1, {1, 2, 3}));
    ASSERT_FALSE(encoded("public.heic", tall));
    EXPECT_EQ(encoded("public.heic", tall).error().description, "more than 16384 pixels along an edge");
    ASSERT_FALSE(encoded("public.jpeg", wide));
    EXPECT_EQ(encoded("public.jpeg", wide).error().description, "more than 65500 pixels along an edge");
    EXPECT_TRUE(encoded("public.jpeg", tall));
    EXPECT_TRUE(encoded("public.png", wide));
}

TEST_F(Encoding, LaysTransparencyOverWhiteWhereItCannotBeHeld)
{
    const auto file = saved(encoded("public.jpeg", redrawn(test::uniformPicture(16, 16, {0, 0, 0, 128}))));
    const auto pixels = test::load(file);
    EXPECT_NEAR(pixels.at(8, 8)[0], 127, 2);
}

TEST_F(Encoding, FailsForAPictureThatCannotBeDecoded)
{
    test::save(m_folder / "a.jpg", test::corneredPicture(64, 64));
    std::filesystem::resize_file(m_folder / "a.jpg", std::filesystem::file_size(m_folder / "a.jpg") / 2);
    const auto source = ImageSource::open(m_folder / "a.jpg");
    ASSERT_TRUE(source);
    EXPECT_FALSE(encoded("public.png", source->image()));
}

// Equal to sRGB by what it does, not by what it is called.
TEST_F(Encoding, TellsTheMetadataWhetherTheColoursAreSrgb)
{
    const auto colorSpaceWith = [&](const std::string& profile) {
        const Image image = asStored(test::corneredPicture(16, 12), {.profile = profile});
        const auto source = ImageSource::open(saved(encoded("public.png", image, test::someMetadata())));
        EXPECT_TRUE(source);
        return test::valueOf(source->metadata().exif, "Exif.Photo.ColorSpace");
    };
    EXPECT_EQ(colorSpaceWith("srgb"), std::string("\1\0", 2));
    EXPECT_EQ(colorSpaceWith(""), std::string("\1\0", 2));
    EXPECT_EQ(colorSpaceWith("p3"), "\xFF\xFF");
}

} // namespace
} // namespace lumora
