// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/image_file_filter.h"

#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

TEST(ImageFileFilter, AcceptsTheSupportedExtensionsInAnyCase)
{
    for (const char* name :
         {"a.jpg", "a.jpeg", "a.png", "a.gif", "a.tif", "a.tiff", "a.bmp", "a.heic", "a.heif", "a.webp",
          "Photo.JPG", "x.Jpeg", "y.HEIF", "/some/where/two.dots.PnG", "\xFF\xFE.webp"}) {
        EXPECT_TRUE(ImageFileFilter::isImage(name)) << name;
    }
}

TEST(ImageFileFilter, RejectsEveryOtherName)
{
    for (const char* name : {"z.jpe", "scan.jp2", "noextension", "README", "", ".png", "a.png.", "a.avif",
                             "a.svg", "a.pdf", "a.cr2", "png", "a.jpgx", "folder.jpg/file", "a.jp\xC4\xA3"}) {
        EXPECT_FALSE(ImageFileFilter::isImage(name)) << name;
    }
}

TEST(ImageFileFilter, JudgesByTheNameAlone)
{
    const test::TemporaryDirectory folder;
    std::filesystem::create_directory(folder / "album.jpg");
    EXPECT_TRUE(ImageFileFilter::isImage(folder / "album.jpg"));
    EXPECT_TRUE(ImageFileFilter::isImage(folder / "missing.jpg"));
}

TEST(ImageFileFilter, HopesForImagesInAnyFolder)
{
    const test::TemporaryDirectory folder;
    std::filesystem::create_directory(folder / "album");
    std::filesystem::create_directory_symlink("album", folder / "link");
    test::writeFile(folder / "notes.txt", "");
    EXPECT_TRUE(ImageFileFilter::canContainImages(folder / "album"));
    EXPECT_TRUE(ImageFileFilter::canContainImages(folder / "link"));
    EXPECT_TRUE(ImageFileFilter::canContainImages(folder / "missing.png"));
    EXPECT_FALSE(ImageFileFilter::canContainImages(folder / "notes.txt"));
    EXPECT_FALSE(ImageFileFilter::canContainImages(folder / "missing"));
}

} // namespace
} // namespace lumora
