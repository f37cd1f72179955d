// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Which damaged GIF files are still pictures.
#include "formats/image_source.h"
#include "pixels/decoding.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

class DamagedGif : public testing::Test
{
protected:
    DamagedGif()
    {
        test::save(m_file, test::corneredPicture(120, 90));
        m_bytes = test::readBytes(m_file);
    }

    bool isPicture(const std::string& bytes)
    {
        test::writeText(m_file, bytes);
        const auto source = ImageSource::open(m_file);
        return source && decode(source->image());
    }
    std::string withHole(std::size_t at, std::size_t size, char filling) const
    {
        return std::string(m_bytes).replace(at, size, size, filling);
    }

    test::TemporaryDirectory m_folder;
    std::filesystem::path m_file = m_folder / "a.gif";
    std::string m_bytes;
};

TEST_F(DamagedGif, WithoutItsTrailerOrWithMoreAfterItIsAPicture)
{
    EXPECT_TRUE(isPicture(m_bytes));
    EXPECT_TRUE(isPicture(m_bytes.substr(0, m_bytes.size() - 1)));
    EXPECT_TRUE(isPicture(m_bytes + std::string(1000, '\0')));
}

TEST_F(DamagedGif, WithTooFewCodesIsUnreadable)
{
    for (const std::size_t missing : {20UL, 200UL, m_bytes.size() / 4})
        EXPECT_FALSE(isPicture(m_bytes.substr(0, m_bytes.size() - missing))) << missing;
}

// The first zero where a block should begin ends the data.
TEST_F(DamagedGif, WithZerosInItsCodesIsUnreadable)
{
    ASSERT_GT(m_bytes.size(), 1500U);
    EXPECT_FALSE(isPicture(withHole(m_bytes.size() / 2, 300, '\0')));
    EXPECT_FALSE(isPicture(withHole(m_bytes.size() - 300, 300, '\0')));
    EXPECT_FALSE(isPicture(withHole(m_bytes.size() / 2, 300, '\xFF')));
}

TEST_F(DamagedGif, OfSeveralPicturesNeedsTheFirstAlone)
{
    test::save(m_file, test::corneredPicture(60, 120), {.pageHeight = 60});
    const std::string frames = test::readBytes(m_file);
    EXPECT_TRUE(isPicture(frames));
}

} // namespace
} // namespace lumora
