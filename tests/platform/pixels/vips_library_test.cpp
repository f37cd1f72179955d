// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "pixels/vips_library.h"

#include "system/child_process.h"
#include "tests/platform/pixels/memory_picture.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace lumora {
namespace {

struct Renderable
{
    std::string name;
    const char* loader;
    std::string content;
};

void PrintTo(const Renderable& file, std::ostream* out)
{
    *out << file.name;
}

class DisguisedFile : public testing::TestWithParam<Renderable>
{
protected:
    // Whether the image library opens a ".png" of this content.
    bool isOpened() const
    {
        test::writeText(m_folder / "a.png", GetParam().content);
        const VipsImagePtr picture(vips_image_new_from_file((m_folder / "a.png").c_str(), nullptr));
        takeVipsError();
        return picture != nullptr;
    }

    const test::TemporaryDirectory m_folder;
};

TEST_P(DisguisedFile, NeverReachesItsRenderer)
{
    ensureVipsReady();
    EXPECT_FALSE(isOpened());
    // Where the renderer is built in, it is the block that keeps it away.
    if (g_type_from_name(GetParam().loader) == 0) return;
    vips_operation_block_set(GetParam().loader, FALSE);
    EXPECT_TRUE(isOpened());
    vips_operation_block_set(GetParam().loader, TRUE);
    EXPECT_FALSE(isOpened());
}

INSTANTIATE_TEST_SUITE_P(
    , DisguisedFile,
    testing::Values(Renderable{"Svg", "VipsForeignLoadSvg",
                               R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"></svg>)"},
                    Renderable{"Pdf", "VipsForeignLoadPdfFile",
                               "%PDF-1.1\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                               "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
                               "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>endobj\n"
                               "trailer<</Root 1 0 R>>\n%%EOF\n"},
                    Renderable{"Ppm", "VipsForeignLoadPpm", "P6\n1 1\n255\nabc"}),
    [](const auto& test) { return test.param.name; });

TEST(ImageLibrary, OpensThePicturesThatItMay)
{
    const test::TemporaryDirectory folder;
    for (const char* name : {"a.png", "a.jpg", "a.tif", "a.gif", "a.webp", "a.heic"}) {
        test::save(folder / name, test::corneredPicture(8, 8));
        const VipsImagePtr picture(vips_image_new_from_file((folder / name).c_str(), nullptr));
        EXPECT_TRUE(picture) << name << ": " << takeVipsError().description;
    }
}

TEST(ImageLibrary, LoadsNoModules)
{
    ensureVipsReady();
    EXPECT_EQ(g_type_from_name("VipsForeignLoadMagick"), 0U);
    EXPECT_EQ(g_type_from_name("VipsForeignLoadOpenslide"), 0U);
}

// Started again in a process of its own for each: this one has the library started.
TEST(ImageLibrary, LeavesTheEnvironmentAsItWas)
{
    constexpr const char* isFresh = "LUMORA_TEST_FRESH_PROCESS";
    if (std::getenv(isFresh)) {
        const char* before = std::getenv("VIPSHOME");
        const std::string value = before ? before : "";
        ensureVipsReady();
        const char* after = std::getenv("VIPSHOME");
        ASSERT_EQ(after != nullptr, before != nullptr);
        EXPECT_EQ(after ? after : "", value);
        return;
    }
    setenv(isFresh, "1", 1);
    for (const char* home : {"/somebodys/vips", ""}) {
        *home ? setenv("VIPSHOME", home, 1) : unsetenv("VIPSHOME");
        const auto outcome = runProcess(std::filesystem::read_symlink("/proc/self/exe"),
                                        {"--gtest_filter=ImageLibrary.LeavesTheEnvironmentAsItWas"});
        ASSERT_TRUE(outcome);
        EXPECT_EQ(outcome->exitStatus, 0) << "VIPSHOME=" << home;
    }
    unsetenv(isFresh);
}

TEST(VipsError, IsTakenOnceAndIsOneText)
{
    ensureVipsReady();
    takeVipsError();
    vips_error("test", "no luck");
    EXPECT_EQ(takeVipsError().description, "test: no luck");
    EXPECT_EQ(takeVipsError().description, "");
}

TEST(BlobOf, IsTheFieldsBytesOrEmpty)
{
    const VipsImagePtr picture = test::pictureOf(test::corneredPicture(2, 2));
    EXPECT_TRUE(blobOf(picture.get(), "exif-data").empty());
    vips_image_set_blob_copy(picture.get(), "exif-data", "a\0b", 3);
    EXPECT_EQ(blobOf(picture.get(), "exif-data"), std::string_view("a\0b", 3));
    vips_image_set_int(picture.get(), "number", 3);
    EXPECT_TRUE(blobOf(picture.get(), "number").empty());
    takeVipsError();
}

} // namespace
} // namespace lumora
