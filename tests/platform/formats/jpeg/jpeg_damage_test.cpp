// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Which JPEG files are pictures: those whose data is all there, whatever is missing around it; none in which
// the decoder had to pass over data or to make it up.
#include "formats/image_source.h"
#include "pixels/decoding.h"
#include "tests/platform/formats/jpeg/jpeg_builder.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <vips/vips.h>

#include <algorithm>
#include <optional>

namespace lumora {
namespace {

using namespace std::string_literals;
using test::JpegKind;

constexpr int width = 203; // ends within a block
constexpr int height = 157;
constexpr std::size_t page = 4096;

class DamagedJpeg : public testing::TestWithParam<JpegKind>
{
protected:
    using Bytes = std::vector<std::uint8_t>;

    // The components in full size; none when the file is unreadable.
    std::optional<Bytes> picture(const std::string& file)
    {
        test::writeText(m_folder / "a.jpg", file);
        const auto source = ImageSource::open(m_folder / "a.jpg");
        if (!source) return std::nullopt;
        const auto decoded = decode(source->image());
        if (!decoded) return std::nullopt;
        std::size_t size = 0;
        void* const memory = vips_image_write_to_memory(decoded->pixels(), &size);
        const auto* const bytes = static_cast<const std::uint8_t*>(memory);
        Bytes components(bytes, bytes + size);
        g_free(memory);
        return components;
    }
    // Whether a much smaller picture can be made of it, decoded at an eighth.
    bool isReadableReduced(const std::string& file)
    {
        test::writeText(m_folder / "a.jpg", file);
        const auto source = ImageSource::open(m_folder / "a.jpg");
        if (!source) return false;
        const auto reduced = source->image().reduced(8);
        return reduced && decode(*reduced);
    }
    void expectPicture(const std::string& file)
    {
        EXPECT_EQ(picture(file), m_picture);
        EXPECT_TRUE(isReadableReduced(file));
    }
    void expectUnreadable(const std::string& file)
    {
        EXPECT_FALSE(picture(file));
        EXPECT_FALSE(isReadableReduced(file));
    }

    std::string withoutEnd() const { return m_file.substr(0, m_file.size() - 2); }
    // The first byte of the entropy-coded data of the largest scan.
    std::size_t dataAt() const { return m_file.find("\xFF\xDA") + 16; }
    bool isHuffman() const { return !GetParam().isArithmetic; }

    test::TemporaryDirectory m_folder;
    const std::string m_file = test::jpegOf(GetParam(), width, height);
    const std::optional<Bytes> m_picture = picture(m_file);
};

TEST_P(DamagedJpeg, IsThePictureThatAnotherDecoderReads)
{
    ASSERT_TRUE(m_picture);
    test::writeText(m_folder / "a.jpg", m_file);
    EXPECT_EQ(*m_picture, test::load(m_folder / "a.jpg").bytes);
    EXPECT_TRUE(isReadableReduced(m_file));
}

// The arithmetic coding leaves out zeros at the end, so that nothing tells an end from a cut.
TEST_P(DamagedJpeg, WithoutItsEndMarkerIsThePicture)
{
    if (!isHuffman()) return expectUnreadable(withoutEnd());
    expectPicture(withoutEnd());
    expectPicture(withoutEnd() + "\xFF");
    expectPicture(withoutEnd() + "\xFF\xFF");
}

TEST_P(DamagedJpeg, WithOtherBytesAfterItsEndIsThePicture)
{
    expectPicture(m_file + std::string(page, '\0'));
    expectPicture(m_file + m_file);
    expectPicture(m_file + "\r\n\r\n");
}

TEST_P(DamagedJpeg, WithFillingBeforeAMarkerIsThePicture)
{
    for (const std::string& filling : {"\0"s, "\xFF\xFF\xFF"s, std::string(30, '\0')}) {
        for (std::size_t marker = m_file.find("\xFF\xDA"); marker != std::string::npos;
             marker = m_file.find("\xFF\xC4", marker + 1))
            expectPicture(std::string(m_file).insert(marker, filling));
        expectPicture(withoutEnd() + filling + "\xFF\xD9");
    }
    expectPicture(std::string(m_file).insert(m_file.find("\xFF\xDA"), "any words of a careless writer"));
}

TEST_P(DamagedJpeg, ThatIsCutOffIsUnreadable)
{
    for (const std::size_t missing : {40UL, 400UL, page, m_file.size() / 2}) {
        const std::string cut = m_file.substr(0, m_file.size() - missing);
        expectUnreadable(cut);
        expectUnreadable(cut + "\xFF");
        if (isHuffman()) expectUnreadable(cut + "\xFF\xD9");
    }
}

TEST_P(DamagedJpeg, WhoseTailIsZerosIsUnreadable)
{
    for (const std::size_t missing : {100UL, 1000UL, page, m_file.size() / 2}) {
        std::string file = m_file;
        std::fill(file.end() - static_cast<std::ptrdiff_t>(missing), file.end(), '\0');
        SCOPED_TRACE(missing);
        expectUnreadable(file);
    }
}

TEST_P(DamagedJpeg, WithAHoleIsUnreadable)
{
    if (!isHuffman()) return;
    for (const char filling : {'\0', '\xFF', '\x55'}) {
        for (const std::size_t at : {dataAt() + 100, m_file.size() / 2, m_file.size() - page - 2}) {
            std::string file = m_file;
            const auto hole = file.begin() + static_cast<std::ptrdiff_t>(at);
            std::fill(hole, hole + page, filling);
            expectUnreadable(file);
            expectUnreadable(std::string(m_file).erase(at, page));
        }
    }
}

// Nothing but the order of its data guards a JPEG: some turned bits give another picture.
TEST_P(DamagedJpeg, WithTurnedBitsIsMostlyUnreadable)
{
    if (!isHuffman()) return;
    constexpr unsigned seed = 20;
    constexpr int attempts = 60;
    std::mt19937 random(seed);
    int unreadable = 0;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        std::string file = m_file;
        for (int i = 0; i < 20; ++i) {
            char& byte = file[dataAt() + random() % (file.size() - dataAt())];
            byte = static_cast<char>(static_cast<unsigned char>(byte) ^ 1U << random() % 8);
        }
        unreadable += picture(file) ? 0 : 1;
    }
    EXPECT_GE(unreadable, attempts * 9 / 10);
}

// Every revision of the header so far is read alike.
TEST_P(DamagedJpeg, WhoseHeaderIsOfAnotherRevisionIsThePicture)
{
    if (m_file.substr(6, 4) != "JFIF") return;
    std::string file = m_file;
    file[11] = 7;
    expectPicture(file);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, DamagedJpeg,
    testing::Values(JpegKind{.name = "Baseline"}, JpegKind{.name = "HalvedColours", .isHalved = true},
                    JpegKind{.name = "Restarts", .isHalved = true, .restartRows = 1},
                    JpegKind{.name = "Progressive", .isProgressive = true, .isHalved = true},
                    JpegKind{.name = "ProgressiveRestarts", .isProgressive = true, .restartRows = 1},
                    JpegKind{.name = "ScanForEach", .isHalved = true, .hasScanForEach = true},
                    JpegKind{.name = "Grey", .components = 1},
                    JpegKind{.name = "ProgressiveGrey", .components = 1, .isProgressive = true},
                    JpegKind{.name = "Inks", .components = 4},
                    JpegKind{.name = "PlainInks", .components = 4, .hasAdobeMarker = false},
                    JpegKind{.name = "ProgressiveInks", .components = 4, .isProgressive = true},
                    JpegKind{.name = "Arithmetic", .isArithmetic = true}),
    [](const auto& instance) { return std::string(instance.param.name); });

class JpegScans : public DamagedJpeg
{
};

TEST_P(JpegScans, ThatAreMissingMakeItUnreadable)
{
    const std::string fewer = m_file.substr(0, test::lastScanOf(m_file));
    expectUnreadable(fewer);
    expectUnreadable(fewer + "\xFF\xD9");
    const std::size_t first = m_file.find("\xFF\xDA");
    const std::size_t second = m_file.find("\xFF\xDA", first + 2);
    expectUnreadable(std::string(m_file).erase(first, second - first));
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, JpegScans,
    testing::Values(JpegKind{.name = "Progressive", .isProgressive = true, .isHalved = true},
                    JpegKind{.name = "ProgressiveGrey", .components = 1, .isProgressive = true},
                    JpegKind{.name = "ScanForEach", .isHalved = true, .hasScanForEach = true}),
    [](const auto& instance) { return std::string(instance.param.name); });

} // namespace
} // namespace lumora
