// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Which damaged TIFF files are still pictures.
#include "formats/image_source.h"
#include "pixels/decoding.h"
#include "tests/platform/formats/tiff/tiff_builder.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <string_view>

namespace lumora {
namespace {

using test::TiffKind;

struct Strip
{
    std::size_t at;
    std::size_t size;
};

class DamagedTiff : public testing::TestWithParam<TiffKind>
{
protected:
    DamagedTiff()
    {
        const test::TiffBuilder builder(m_file, GetParam());
        m_bytes = test::readBytes(m_file);
    }

    bool isPicture(const std::string& bytes)
    {
        test::writeText(m_file, bytes);
        const auto source = ImageSource::open(m_file);
        return source && decode(source->image());
    }

    // Where the last strip or tile of the file lies.
    Strip lastStrip() const
    {
        TIFF* const tiff = TIFFOpen(m_file.c_str(), "r");
        const std::uint32_t last =
            (TIFFIsTiled(tiff) ? TIFFNumberOfTiles(tiff) : TIFFNumberOfStrips(tiff)) - 1;
        const Strip strip{TIFFGetStrileOffset(tiff, last), TIFFGetStrileByteCount(tiff, last)};
        TIFFClose(tiff);
        return strip;
    }

    // The file with bytes of its last strip replaced, from a share of it on.
    std::string withStrip(double from, char filling) const
    {
        const Strip strip = lastStrip();
        const auto kept = static_cast<std::size_t>(static_cast<double>(strip.size) * from);
        return std::string(m_bytes).replace(strip.at + kept, strip.size - kept, strip.size - kept, filling);
    }

    test::TemporaryDirectory m_folder;
    std::filesystem::path m_file = m_folder / "a.tif";
    std::string m_bytes;
};

TEST_P(DamagedTiff, IsNoneWhenAPieceWasNeverWritten)
{
    const std::uint32_t at = static_cast<std::uint32_t>(lastStrip().at);
    std::string offset;
    for (unsigned shift = 0; shift < 32; shift += 8)
        offset += static_cast<char>(at >> shift & 0xFFU);
    const std::size_t field = m_bytes.rfind(offset);
    ASSERT_NE(field, std::string::npos);
    EXPECT_FALSE(isPicture(std::string(m_bytes).replace(field, 4, 4, '\0')));
}

TEST_P(DamagedTiff, IsAPictureWhileItIsWhole)
{
    EXPECT_TRUE(isPicture(m_bytes));
    EXPECT_TRUE(isPicture(m_bytes + std::string(4096, '\0')));
}

TEST_P(DamagedTiff, WhoseLastStripLiesBeyondTheEndIsUnreadable)
{
    const Strip strip = lastStrip();
    EXPECT_FALSE(isPicture(std::string(m_bytes).erase(strip.at + strip.size / 2)));
}

TEST_P(DamagedTiff, WhoseStripEndsInZerosIsUnreadable)
{
    EXPECT_FALSE(isPicture(withStrip(0.5, '\0')));
    EXPECT_FALSE(isPicture(withStrip(0, '\0')));
}

TEST_P(DamagedTiff, WhoseDescriptionLiesNowhereIsAPicture)
{
    TIFF* const tiff = TIFFOpen(m_file.c_str(), "r+");
    TIFFSetField(tiff, TIFFTAG_IMAGEDESCRIPTION, "a harbour in the evening");
    TIFFRewriteDirectory(tiff);
    TIFFClose(tiff);
    std::string bytes = test::readBytes(m_file);
    constexpr std::string_view entry("\x0E\x01\x02\x00", 4); // the field and its type
    const std::size_t at = bytes.rfind(entry);
    ASSERT_NE(at, std::string::npos);
    constexpr std::size_t placeInEntry = 8;
    EXPECT_TRUE(isPicture(bytes.replace(at + placeInEntry, 4, "\xF0\xFF\xFF\x7F")));
}

INSTANTIATE_TEST_SUITE_P(
    Compressions, DamagedTiff,
    testing::Values(TiffKind{.name = "Lzw", .compression = COMPRESSION_LZW},
                    TiffKind{.name = "Deflate", .compression = COMPRESSION_ADOBE_DEFLATE},
                    TiffKind{
                        .name = "DeflateTiles", .compression = COMPRESSION_ADOBE_DEFLATE, .isTiled = true},
                    TiffKind{.name = "PackBits", .compression = COMPRESSION_PACKBITS},
                    TiffKind{.name = "Jpeg", .compression = COMPRESSION_JPEG},
                    TiffKind{.name = "JpegHalved",
                             .photometric = PHOTOMETRIC_YCBCR,
                             .compression = COMPRESSION_JPEG,
                             .isTiled = true,
                             .halving = 2},
                    TiffKind{.name = "Zstd", .compression = COMPRESSION_ZSTD},
                    TiffKind{.name = "Lzma", .compression = COMPRESSION_LZMA},

                    TiffKind{.name = "Group3",
                             .bits = 1,
                             .photometric = PHOTOMETRIC_MINISWHITE,
                             .samples = 1,
                             .compression = COMPRESSION_CCITTFAX3},
                    TiffKind{.name = "Group4",
                             .bits = 1,
                             .photometric = PHOTOMETRIC_MINISWHITE,
                             .samples = 1,
                             .compression = COMPRESSION_CCITTFAX4}),
    [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace lumora
