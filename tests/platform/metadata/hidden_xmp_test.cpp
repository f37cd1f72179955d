// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "hidden_xmp.h"

#include "metadata/jpeg_segments.h"
#include "metadata/reading.h"
#include "system/file_descriptor.h"
#include "tests/support/exif_builder.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>

namespace lumora {
namespace {

using test::ExifBuilder;
using testing::IsEmpty;
using testing::SizeIs;

class FoundXmp : public testing::Test
{
protected:
    FileDescriptor opened(const std::string& bytes) const
    {
        test::writeFile(m_folder / "a", bytes);
        return FileDescriptor(::open((m_folder / "a").c_str(), O_RDONLY | O_CLOEXEC));
    }
    XmpInFile found(const std::string& bytes) const { return findXmp(opened(bytes).get()); }

    static std::string segment(const std::string& content)
    {
        return "\xFF\xE1" + ExifBuilder(true).number(content.size() + 2, 2) + content;
    }
    static std::string jpeg(const std::string& segments)
    {
        return "\xFF\xD8" + segments + std::string("\xFF\xDA\0\2\xFF\xD9", 6);
    }
    static std::string packetNaming(const std::string& extension)
    {
        return "<x xmpNote:HasExtendedXMP=\"" + extension + "\"/>";
    }
    std::string piece(const std::string& bytes, std::size_t whole, std::size_t at) const
    {
        return segment(jpegExtendedXmpSignature + m_name + m_big.number(whole, 4) + m_big.number(at, 4) +
                       bytes);
    }

    const test::TemporaryDirectory m_folder;
    const std::string m_name = "0123456789ABCDEF0123456789ABCDEF";
    const ExifBuilder m_big{true};
};

TEST_F(FoundXmp, OfAJpegHasItsExtensionInWhateverOrderItsPiecesStand)
{
    const std::string first = segment(jpegXmpSignature + packetNaming(m_name));
    const XmpInFile xmp = found(jpeg(piece("world", 10, 5) + first + piece("hello", 10, 0)));
    EXPECT_EQ(xmp.packet, packetNaming(m_name));
    EXPECT_EQ(xmp.extension, "helloworld");
    EXPECT_THAT(xmp.masks, SizeIs(1));
}

TEST_F(FoundXmp, HasNoExtensionThatIsIncompleteOrOfAnotherPacket)
{
    const std::string first = segment(jpegXmpSignature + packetNaming(m_name));
    const std::string other = segment(jpegXmpSignature + packetNaming(std::string(32, 'F')));
    const std::string unnamed = segment(jpegXmpSignature + "<x/>");
    EXPECT_EQ(found(jpeg(first + piece("hello", 10, 0))).extension, "");
    EXPECT_EQ(found(jpeg(other + piece("hello", 5, 0))).extension, "");
    EXPECT_EQ(found(jpeg(unnamed + piece("hello", 5, 0))).extension, "");
    EXPECT_EQ(found(jpeg(first + piece("hello", 5, 3))).extension, "");
    EXPECT_EQ(found(jpeg(first + piece("hello", 4'000'000'000, 0))).extension, "");
    EXPECT_EQ(found(jpeg(first + segment(jpegExtendedXmpSignature + "short"))).extension, "");
}

TEST_F(FoundXmp, IsFoundBehindFillBytesAndUpToDamage)
{
    const std::string first = segment(jpegXmpSignature + "<x/>");
    EXPECT_EQ(found(jpeg("\xFF\xFF" + first)).packet, "<x/>");
    EXPECT_EQ(found(jpeg("nothing" + first)).packet, "");
    EXPECT_EQ(found("\xFF\xD8" + first.substr(0, first.size() - 1)).packet, "");
    EXPECT_EQ(found("\xFF\xD8").packet, "");
    EXPECT_EQ(found("").packet, "");
}

// The library reads the packet of every block, where no reader of ours looks for one.
TEST_F(FoundXmp, IsHiddenInABlockInEitherByteOrder)
{
    for (const bool isBigEndian : {true, false}) {
        const ExifBuilder exif(isBigEndian);
        const std::string packet = "<x:xmpmeta xmlns:x='adobe:ns:meta/'/>";
        std::string block = (isBigEndian ? "MM" : "II") + exif.number(42, 2) + exif.number(8, 4) +
                            exif.number(2, 2) + exif.entry(0x0100, 4, 1, 5) +
                            exif.entry(0x02BC, 1, packet.size(), 38) + exif.number(0, 4) + packet;
        EXPECT_EQ(found(block).packet, packet);
        const std::string whole = block;
        hideXmpOfTiff(block);
        EXPECT_NE(block, whole);
        EXPECT_THAT(found(block).packet, IsEmpty());
        Metadata metadata;
        readBlocks(whole, {}, metadata);
        EXPECT_EQ(metadata.tiff.size(), 1U); // the width alone
    }
}

} // namespace
} // namespace lumora
