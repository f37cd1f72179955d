// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_pages.h"

#include "system/file_descriptor.h"
#include "tests/support/exif_builder.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <fcntl.h>

#include <array>
#include <utility>

namespace lumora {
namespace {

using test::ExifBuilder;

TiffPages pagesOf(const std::string& bytes)
{
    const test::TemporaryDirectory folder;
    test::writeFile(folder / "a.tif", bytes);
    const FileDescriptor file(::open((folder / "a.tif").c_str(), O_RDONLY | O_CLOEXEC));
    return tiffPages(file.get());
}

// Three directories of two fields each; the last leads to `next`.
std::string threePages(const ExifBuilder& exif, std::array<unsigned, 3> kinds, std::size_t next)
{
    constexpr std::size_t size = 30;
    // A number of two bytes stands at the front of its four.
    const auto shortValue = [&](unsigned tag, unsigned value) {
        return exif.number(tag, 2) + exif.number(3, 2) + exif.number(1, 4) + exif.number(value, 2) +
               exif.number(0, 2);
    };
    std::string file = (exif.number(1, 2)[0] == '\0' ? "MM" : "II") + exif.number(42, 2) + exif.number(8, 4);
    for (std::size_t i = 0; i < 3; ++i) {
        file += exif.number(2, 2) + exif.entry(0x00FE, 4, 1, kinds.at(i)) + shortValue(0x0102, 16) +
                exif.number(i < 2 ? 8 + (i + 1) * size : next, 4);
    }
    return file;
}

TEST(TiffPages, AreCountedButForSmallCopies)
{
    for (const bool isBigEndian : {true, false}) {
        const ExifBuilder exif(isBigEndian);
        EXPECT_EQ(pagesOf(threePages(exif, {0, 0, 0}, 0)).count, 3);
        EXPECT_EQ(pagesOf(threePages(exif, {2, 2, 2}, 0)).count, 3);
        EXPECT_EQ(pagesOf(threePages(exif, {0, 1, 3}, 0)).count, 1);
        EXPECT_EQ(pagesOf(threePages(exif, {0, 0, 0}, 0)).bits, 16);
    }
}

TEST(TiffPages, OfSeveralComponentsHaveTheBitsOfTheFirst)
{
    const ExifBuilder exif(false);
    const std::string file = "II" + exif.number(42, 2) + exif.number(8, 4) + exif.number(1, 2) +
                             exif.entry(0x0102, 3, 3, 26) + exif.number(0, 4) + exif.number(12, 2) +
                             exif.number(12, 2) + exif.number(12, 2);
    EXPECT_EQ(pagesOf(file).bits, 12);
    EXPECT_EQ(pagesOf(file).count, 1);
}

TEST(TiffPages, OfADamagedFileAreNotCounted)
{
    const ExifBuilder exif(false);
    EXPECT_EQ(pagesOf(threePages(exif, {0, 0, 0}, 8)).count, 0); // back to the first, for ever
    EXPECT_EQ(pagesOf(threePages(exif, {0, 0, 0}, 5000)).count, 0);
    EXPECT_EQ(pagesOf("").count, 0);
    EXPECT_EQ(pagesOf(std::string("II+\0", 4)).count, 0);
}

} // namespace
} // namespace lumora
