// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "format_io.h"
#include "tests/platform/formats/photographs.h"
#include "tests/platform/formats/written_pictures.h"
#include "types/heif_items.h"

#include <vips/vips.h>

namespace lumora {
namespace {

class Heif : public test::WrittenPictures
{
protected:
    // A picture coded as its extension says, under other brands.
    std::optional<std::string> typeUnder(const std::string& brand, const std::string& extension)
    {
        test::save(m_folder / ("a." + extension), test::corneredPicture(16, 16));
        std::string bytes = test::readBytes(m_folder / ("a." + extension));
        const std::size_t boxEnd = static_cast<unsigned char>(bytes.at(3));
        for (std::size_t at = 8; at < boxEnd; at += 4) {
            if (at != 12) bytes.replace(at, 4, brand);
        }
        test::writeText(m_folder / "b.heic", bytes);
        const auto source = ImageSource::open(m_folder / "b.heic");
        EXPECT_TRUE(source) << source.error().description;
        EXPECT_TRUE(decode(source->image()));
        return source->typeIdentifier();
    }
};

// What the first bytes say is only a claim.
TEST_F(Heif, IsCalledByWhatItIsCodedWith)
{
    for (const char* brand : {"heic", "mif1", "avif"})
        EXPECT_EQ(typeUnder(brand, "heic"), "public.heic") << brand;
    for (const char* brand : {"heic", "mif1", "avif"})
        EXPECT_EQ(typeUnder(brand, "avif"), "public.avif") << brand;
}

TEST_F(Heif, WhosePictureIsPutTogetherIsCalledByItsPieces)
{
    EXPECT_EQ((HeifItems{3, {{1, "hvc1"}, {2, "hvc1"}, {3, "grid"}}}.codec()), "hevc");
    EXPECT_EQ((HeifItems{3, {{1, "av01"}, {2, "av01"}, {3, "grid"}}}.codec()), "av1");
    EXPECT_EQ((HeifItems{2, {{1, "hvc1"}, {2, "jpeg"}}}.codec()), "");
    EXPECT_EQ(HeifItems{}.codec(), "");
}

TEST_F(Heif, IsOfOnePieceWhereItsPictureIsCodedByItself)
{
    EXPECT_TRUE((HeifItems{1, {{1, "hvc1"}, {2, "hvc1"}, {3, "grid"}}}.isOnePiece()));
    EXPECT_FALSE((HeifItems{3, {{1, "hvc1"}, {2, "hvc1"}, {3, "grid"}}}.isOnePiece()));
    EXPECT_FALSE(HeifItems{}.isOnePiece());
}

TEST_F(Heif, AloneIsLookedInto)
{
    for (const Format* format : formats()) {
        const bool isHeif = format == &heicFormat || format == &heifFormat || format == &avifFormat;
        EXPECT_EQ(format->lookedInto != nullptr, isHeif) << format->identifier;
    }
}

TEST_F(Heif, WithoutAKnownCodecIsWhatItClaims)
{
    test::writeText(m_folder / "a.heif", std::string("\0\0\0\x10"
                                                     "ftypmif1\0\0\0\0",
                                                     16));
    EXPECT_EQ(formatOfFile(m_folder / "a.heif"), &heifFormat);
}

TEST_F(Heif, ThatIsCutOffGivesNoPicture)
{
    test::save(m_folder / "a.heic", test::corneredPicture(64, 64));
    const std::string bytes = test::readBytes(m_folder / "a.heic");
    for (std::size_t size = 0; size < bytes.size(); size += bytes.size() / 12) {
        test::writeText(m_folder / "b.heic", bytes.substr(0, size));
        const auto source = ImageSource::open(m_folder / "b.heic");
        EXPECT_FALSE(source && decode(source->image())) << size;
    }
}

TEST_F(Heif, WithAHoleInItsDataGivesNoPicture)
{
    constexpr std::size_t holeLength = 32;
    test::save(m_folder / "a.heic", test::photographLike(320, 240));
    const std::string whole = test::readBytes(m_folder / "a.heic");
    const std::size_t start = whole.find("mdat") + 200;
    ASSERT_LT(start + 10 * holeLength, whole.size());
    for (std::size_t at = start; at + 2 * holeLength < whole.size(); at += (whole.size() - start) / 9) {
        std::string damaged = whole;
        damaged.replace(at, holeLength, holeLength, '\0');
        test::writeText(m_folder / "b.heic", damaged);
        const auto source = ImageSource::open(m_folder / "b.heic");
        EXPECT_FALSE(source && decode(source->image())) << at << " of " << whole.size();
    }
}

// What the decoder cannot make out stays as its memory was: that of another picture, perhaps.
TEST_F(Heif, ThatIsDamagedShowsNothingOfThePictureBefore)
{
#ifdef LUMORA_SANITIZED
    GTEST_SKIP() << "the sanitizer's heap fills nothing";
#endif
    constexpr int width = 300;
    constexpr int height = 200;
    test::save(m_folder / "before.heic", test::uniformPicture(width, height, {250, 20, 30, 70}));
    test::Pixels covered = test::uniformPicture(width, height, {250, 20, 30, 0});
    for (std::size_t i = 0; i < covered.bytes.size() / 4; ++i)
        covered.bytes[4 * i + 3] = static_cast<std::uint8_t>(i * i / 7);
    test::save(m_folder / "a.heic", covered);
    const std::string whole = test::readBytes(m_folder / "a.heic");
    const auto decodedAgain = [&] {
        const auto source = ImageSource::open(m_folder / "b.heic");
        const auto picture = source ? decode(source->image()) : Result<Image>(source.error());
        if (!picture) return std::string();
        size_t size = 0;
        void* const bytes = vips_image_write_to_memory(picture->pixels(), &size);
        std::string pixels(static_cast<const char*>(bytes), size);
        g_free(bytes);
        return pixels;
    };
    const std::size_t start = whole.find("mdat") + 40;
    int pictures = 0;
    for (std::size_t at = start; at < whole.size(); at += (whole.size() - start) / 200) {
        std::string damaged = whole;
        damaged[at] = static_cast<char>(damaged[at] ^ 1);
        test::writeText(m_folder / "b.heic", damaged);
        const std::string first = decodedAgain();
        if (first.empty()) continue;
        ++pictures;
        EXPECT_TRUE(decode(ImageSource::open(m_folder / "before.heic")->image()));
        EXPECT_TRUE(decodedAgain() == first) << at;
    }
    EXPECT_GT(pictures, 0) << "nothing was shown";
}

} // namespace
} // namespace lumora
