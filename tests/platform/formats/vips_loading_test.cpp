// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "vips_loading.h"

#include "format_io.h"
#include "system/file_descriptor.h"
#include "tests/platform/formats/written_pictures.h"

#include <fcntl.h>

namespace lumora {
namespace {

class StrictLoading : public test::WrittenPictures
{
protected:
    StrictLoading()
    {
        allowOperations();
        test::save(m_folder / "a.png", test::corneredPicture(64, 48));
    }
    FileDescriptor opened() const
    {
        return FileDescriptor(::open((m_folder / "a.png").c_str(), O_RDONLY | O_CLOEXEC));
    }
    static bool isReadable(VipsImage* image)
    {
        double mean = 0;
        const bool isRead = vips_avg(image, &mean, nullptr) == 0;
        takeVipsError();
        return isRead;
    }
};

TEST_F(StrictLoading, LeavesTheDescriptorToTheCaller)
{
    const FileDescriptor file = opened();
    {
        const auto image = loadStrictly(vips_pngload_source, file.get());
        ASSERT_TRUE(image) << image.error().description;
        EXPECT_TRUE(isReadable(image->get()));
    }
    EXPECT_NE(fcntl(file.get(), F_GETFD), -1);
    const auto again = loadStrictly(vips_pngload_source, file.get());
    ASSERT_TRUE(again);
    EXPECT_TRUE(isReadable(again->get()));
}

// The picture keeps what it needs.
TEST_F(StrictLoading, OutlivesTheCallersDescriptor)
{
    const auto image = [this] {
        const FileDescriptor file = opened();
        return loadStrictly(vips_pngload_source, file.get());
    }();
    ASSERT_TRUE(image);
    EXPECT_TRUE(isReadable(image->get()));
}

TEST_F(StrictLoading, FailsWhereRowsAreMissing)
{
    std::filesystem::resize_file(m_folder / "a.png", std::filesystem::file_size(m_folder / "a.png") - 60);
    const FileDescriptor file = opened();
    const auto image = loadStrictly(vips_pngload_source, file.get());
    EXPECT_FALSE(image && isReadable(image->get()));
}

TEST_F(StrictLoading, FailsForAnotherFormatAndForNoFile)
{
    const FileDescriptor file = opened();
    EXPECT_FALSE(loadStrictly(vips_jpegload_source, file.get()));
    EXPECT_FALSE(loadStrictly(vips_pngload_source, -1));
}

TEST(AttachedMetadata, IsTheBlockAndThePacketOfThePicture)
{
    ensureVipsReady();
    const VipsImagePtr image(vips_image_new());
    Metadata metadata;
    readAttachedMetadata(image.get(), metadata);
    EXPECT_EQ(metadata, Metadata{});
    const std::string exif = exifBlock(test::someMetadata(), {8, 8, true, {}});
    vips_image_set_blob_copy(image.get(), VIPS_META_EXIF_NAME, exif.data(), exif.size());
    const std::string xmp = test::someMetadata().xmp;
    vips_image_set_blob_copy(image.get(), VIPS_META_XMP_NAME, xmp.data(), xmp.size());
    readAttachedMetadata(image.get(), metadata);
    test::expectSomeMetadata(metadata, false);
}

} // namespace
} // namespace lumora
