// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes of an XMP packet when its picture is written anew.
#include "metadata/blocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lumora {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string packetWith(const std::string& namespaces, const std::string& properties)
{
    return "<?xpacket begin='\xEF\xBB\xBF' id='W5M0MpCehiHzreSzNTczkc9d'?>"
           "<x:xmpmeta xmlns:x='adobe:ns:meta/'>"
           "<rdf:RDF xmlns:rdf='http://www.w3.org/1999/02/22-rdf-syntax-ns#'>"
           "<rdf:Description rdf:about='' xmlns:dc='http://purl.org/dc/elements/1.1/' " +
           namespaces + "><dc:source>kept words</dc:source>" + properties +
           "</rdf:Description></rdf:RDF></x:xmpmeta>" + std::string(300, ' ') + "<?xpacket end='w'?>";
}

std::string written(const std::string& packet, const PictureFacts& facts = {120, 90, true, {}})
{
    return xmpPacket({.xmp = packet}, facts);
}

struct Gone
{
    const char* name;
    const char* namespaces;
    const char* properties;
    const char* trace;
};

void PrintTo(const Gone& gone, std::ostream* out)
{
    *out << gone.name;
}

class XmpOfLostData : public testing::TestWithParam<Gone>
{
};

TEST_P(XmpOfLostData, IsLeftOut)
{
    const std::string packet = written(packetWith(GetParam().namespaces, GetParam().properties));
    EXPECT_THAT(packet, HasSubstr("kept words"));
    EXPECT_THAT(packet, Not(HasSubstr(GetParam().trace)));
}

INSTANTIATE_TEST_SUITE_P(
    Properties, XmpOfLostData,
    testing::Values(
        Gone{"MicroVideo", "xmlns:cam='http://ns.google.com/photos/1.0/camera/'",
             "<cam:MicroVideo>1</cam:MicroVideo><cam:MicroVideoOffset>9</cam:MicroVideoOffset>",
             "MicroVideo"},
        Gone{"MotionPhoto", "xmlns:GCamera='http://ns.google.com/photos/1.0/camera/'",
             "<GCamera:MotionPhoto>1</GCamera:MotionPhoto>", "MotionPhoto"},
        Gone{"ContainerItems",
             "xmlns:Container='http://ns.google.com/photos/1.0/container/' "
             "xmlns:Item='http://ns.google.com/photos/1.0/container/item/'",
             "<Container:Directory><rdf:Seq><rdf:li rdf:parseType='Resource'><Container:Item "
             "Item:Mime='video/mp4' Item:Length='77'/></rdf:li></rdf:Seq></Container:Directory>",
             "Item"},
        Gone{"GainMap", "xmlns:hdrgm='http://ns.adobe.com/hdr-gain-map/1.0/'",
             "<hdrgm:Version>1.0</hdrgm:Version><hdrgm:GainMapMax>2</hdrgm:GainMapMax>", "ersion>1.0"},
        Gone{"DepthMap", "xmlns:GDepth='http://ns.google.com/photos/1.0/depthmap/'",
             "<GDepth:Mime>image/png</GDepth:Mime>", "GDepth"},
        Gone{"RestOfAnOverlongPacket", "xmlns:xmpNote='http://ns.adobe.com/xmp/note/'",
             "<xmpNote:HasExtendedXMP>0123456789ABCDEF0123456789ABCDEF</xmpNote:HasExtendedXMP>",
             "HasExtendedXMP"},
        Gone{"OtherProfile", "xmlns:photoshop='http://ns.adobe.com/photoshop/1.0/'",
             "<photoshop:ICCProfile>Display P3</photoshop:ICCProfile>", "ICCProfile"},
        Gone{"Preview",
             "xmlns:xmp='http://ns.adobe.com/xap/1.0/' xmlns:g='http://ns.adobe.com/xap/1.0/g/img/'",
             "<xmp:Thumbnails><rdf:Alt><rdf:li rdf:parseType='Resource'><g:image>QUJD</g:image></rdf:li>"
             "</rdf:Alt></xmp:Thumbnails>",
             "QUJD"},
        Gone{"OldLayout", "xmlns:tiff='http://ns.adobe.com/tiff/1.0/'",
             "<tiff:SamplesPerPixel>4</tiff:SamplesPerPixel>", "SamplesPerPixel"}),
    [](const auto& instance) { return std::string(instance.param.name); });

TEST(XmpPacket, SpeaksOfTheNewPicture)
{
    const std::string packet = written(packetWith(
        "xmlns:tiff='http://ns.adobe.com/tiff/1.0/' xmlns:exif='http://ns.adobe.com/exif/1.0/'",
        "<tiff:Orientation>6</tiff:Orientation><tiff:ImageWidth>4000</tiff:ImageWidth>"
        "<tiff:ImageLength>3000</tiff:ImageLength><exif:PixelXDimension>4001</exif:PixelXDimension>"
        "<exif:PixelYDimension>3001</exif:PixelYDimension><exif:ColorSpace>65535</exif:ColorSpace>"));
    for (const char* property :
         {"tiff:Orientation=\"1\"", "tiff:ImageWidth=\"120\"", "tiff:ImageLength=\"90\"",
          "exif:PixelXDimension=\"120\"", "exif:PixelYDimension=\"90\"", "exif:ColorSpace=\"1\""}) {
        EXPECT_THAT(packet, HasSubstr(property));
    }
}

TEST(XmpPacket, KeepsTheNameOfAProfileThatStays)
{
    const std::string packet = packetWith("xmlns:photoshop='http://ns.adobe.com/photoshop/1.0/'",
                                          "<photoshop:ICCProfile>Display P3</photoshop:ICCProfile>");
    EXPECT_THAT(written(packet, {8, 8, false, "Display P3"}), HasSubstr("Display P3"));
    EXPECT_THAT(written(packet, {8, 8, true, "sRGB"}), Not(HasSubstr("Display P3")));
}

TEST(XmpPacket, KeepsItsWordingWithoutThePaddingWhenNothingChanges)
{
    std::string packet = packetWith("", "");
    const std::string kept = written(packet);
    packet.erase(packet.find(std::string(300, ' ')), 300);
    EXPECT_EQ(kept, packet);
}

TEST(XmpPacket, IsLeftOutWhenItCannotBeReadOrNothingRemains)
{
    EXPECT_EQ(written("<x:xmpmeta"), "");
    std::string packet = packetWith("xmlns:hdrgm='http://ns.adobe.com/hdr-gain-map/1.0/'",
                                    "<hdrgm:Version>1.0</hdrgm:Version>");
    const std::string words = "<dc:source>kept words</dc:source>";
    packet.erase(packet.find(words), words.size());
    EXPECT_EQ(written(packet), "");
}

} // namespace
} // namespace lumora
