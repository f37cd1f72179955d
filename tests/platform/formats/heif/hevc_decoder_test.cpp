// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/platform/formats/heif/coded_pictures.h"
#include "tests/platform/formats/photographs.h"
#include "tests/platform/formats/written_pictures.h"

#include <vips/vips.h>

#include <utility>
#include <vector>

namespace lumora {
namespace {

using Bytes = std::vector<std::uint8_t>;

class HevcDecoder : public test::WrittenPictures
{
protected:
    void saveWith(heif_matrix_coefficients matrix) const
    {
        test::saveCoded(m_file, test::photographLike(300, 204), {.matrix = matrix});
    }

    // Writes the codes of how colours became components over those of the container.
    void claim(std::uint8_t matrix, bool isFullRange) const
    {
        std::string bytes = test::readBytes(m_file);
        const std::size_t codes = bytes.find("nclx");
        ASSERT_NE(codes, std::string::npos);
        bytes[codes + 9] = static_cast<char>(matrix);
        bytes[codes + 10] = static_cast<char>(isFullRange ? 0x80 : 0);
        test::writeText(m_file, bytes);
    }

    // Makes padding, which decoders pass over, of a slice in the middle of the picture.
    void dropASlice() const
    {
        constexpr int firstOther = 32; // of the kinds of units
        constexpr int padding = 38;
        std::string bytes = test::readBytes(m_file);
        std::vector<std::size_t> slices;
        for (std::size_t at = bytes.find("mdat") + 4; at + 6 < bytes.size();) {
            std::size_t length = 0;
            for (int i = 0; i < 4; ++i)
                length = length << 8U | static_cast<std::uint8_t>(bytes[at++]);
            if (static_cast<std::uint8_t>(bytes[at]) >> 1U < firstOther) slices.push_back(at);
            at += length;
        }
        ASSERT_GT(slices.size(), 2U);
        bytes[slices[1]] = static_cast<char>(padding << 1U);
        test::writeText(m_file, bytes);
    }

    static test::Pixels grayPicture()
    {
        test::Pixels gray = test::uniformPicture(320, 256, {0});
        for (std::size_t i = 0; i < gray.bytes.size(); ++i)
            gray.bytes[i] = static_cast<std::uint8_t>(i % 320 / 2 + i / 5000);
        return gray;
    }

    Bytes colors() const
    {
        const auto source = ImageSource::open(m_file);
        const auto picture = source ? decode(source->image()) : Result<Image>(source.error());
        if (!picture) return {};
        std::size_t size = 0;
        void* const memory = vips_image_write_to_memory(picture->pixels(), &size);
        const auto* const first = static_cast<const std::uint8_t*>(memory);
        Bytes bytes(first, first + size);
        g_free(memory);
        return bytes;
    }

    // The components as the HEIF library makes colours of them.
    Bytes librarysColors() const
    {
        const HeifContext context(heif_context_alloc());
        checkHeif(heif_context_read_from_file(context.get(), m_file.c_str(), nullptr));
        heif_image_handle* handle = nullptr;
        checkHeif(heif_context_get_primary_image_handle(context.get(), &handle));
        const HeifHandle primary(handle);
        heif_image* decoded = nullptr;
        checkHeif(heif_decode_image(handle, &decoded, heif_colorspace_RGB, heif_chroma_444, nullptr));
        const HeifPicture picture(decoded);
        Bytes bytes;
        for (int y = 0; y < heif_image_get_height(decoded, heif_channel_R); ++y) {
            for (int x = 0; x < heif_image_get_width(decoded, heif_channel_R); ++x) {
                for (const heif_channel channel : {heif_channel_R, heif_channel_G, heif_channel_B}) {
                    int stride = 0;
                    const auto* const plane = heif_image_get_plane_readonly(decoded, channel, &stride);
                    bytes.push_back(plane[std::ptrdiff_t{y} * stride + x]);
                }
            }
        }
        return bytes;
    }

    const std::filesystem::path m_file = m_folder / "a.heic";
};

TEST_F(HevcDecoder, MakesTheColoursThatTheLibraryMakes)
{
    for (const auto matrix :
         {heif_matrix_coefficients_ITU_R_BT_601_6, heif_matrix_coefficients_ITU_R_BT_709_5,
          heif_matrix_coefficients_ITU_R_BT_2020_2_non_constant_luminance}) {
        saveWith(matrix);
        const Bytes own = colors();
        EXPECT_EQ(own.size(), 300U * 204 * 3);
        EXPECT_TRUE(own == librarysColors()) << matrix;
    }
}

TEST_F(HevcDecoder, LeavesColoursThatTheContainerCallsOthersToTheLibrary)
{
    saveWith(heif_matrix_coefficients_ITU_R_BT_601_6);
    const Bytes usual = colors();
    for (const auto& [matrix, isFullRange] : {std::pair{1, true}, {6, false}, {9, true}}) {
        claim(static_cast<std::uint8_t>(matrix), isFullRange);
        const Bytes own = colors();
        EXPECT_TRUE(own == librarysColors()) << matrix;
        EXPECT_FALSE(own == usual) << matrix;
    }
}

TEST_F(HevcDecoder, RefusesGrayThatLacksASlice)
{
#ifdef LUMORA_SANITIZED
    GTEST_SKIP() << "the sanitizer's heap fills nothing";
#endif
    test::saveInSlices(m_file, grayPicture(), 4);
    ASSERT_FALSE(colors().empty());
    dropASlice();
    EXPECT_TRUE(colors().empty());
}

// Memory that nobody has written to looks the same.
TEST_F(HevcDecoder, TakesAnyGray)
{
    for (int gray = 250; gray < 256; ++gray) {
        test::saveInSlices(m_file, test::uniformPicture(64, 64, {static_cast<std::uint8_t>(gray)}), 1);
        EXPECT_FALSE(colors().empty()) << gray;
    }
}

} // namespace
} // namespace lumora
