// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is left of a file when metadata or the profile is left out of it.
#include "formats/file_copy.h"

#include "system/regular_file.h"
#include "tests/platform/formats/jpeg/jpeg_builder.h"
#include "tests/platform/formats/png/png_file.h"
#include "tests/support/jpeg_segment.h"

#include <gtest/gtest.h>

#include <sys/mman.h>

#include <optional>

namespace lumora {
namespace {

using namespace std::string_literals;
using test::jpegSegment;
using test::pngOf;

constexpr LeftOut nothing;
constexpr LeftOut metadata{.metadata = true};
constexpr LeftOut profile{.profile = true};
constexpr LeftOut both{.metadata = true, .profile = true};

std::optional<std::string> copyOf(const std::string& content, const std::string& type, const LeftOut& leftOut)
{
    const test::OpenFile file(content);
    OutputFile output(FileDescriptor(memfd_create("copy", MFD_CLOEXEC)), "copy");
    const auto isCopied = copyFile(file.get(), type, leftOut, output);
    EXPECT_TRUE(isCopied);
    EXPECT_EQ(lseek(file.get(), 0, SEEK_CUR), 0);
    if (!isCopied || !*isCopied) return std::nullopt;
    return test::textOf(*readAll(output.descriptor(), std::size_t{1} << 24U));
}

std::optional<std::string> jpegCopy(const std::string& content, const LeftOut& leftOut)
{
    return copyOf(content, "public.jpeg", leftOut);
}
std::optional<std::string> pngCopy(const std::string& content, const LeftOut& leftOut)
{
    return copyOf(content, "public.png", leftOut);
}

const std::string start = "\xFF\xD8";
const std::string end = "\xFF\xD9";
const std::string jfif = jpegSegment(0xE0, "JFIF\0\1\2\0\0\1\0\1\0\0"s);
const std::string table = jpegSegment(0xDB, "a table");
const std::string scan = jpegSegment(0xDA, "head") + "coded\xFF\0\xFF\xD0\xFF\xFF\0data"s;
const std::string icc = jpegSegment(0xE2, "ICC_PROFILE\0\1\1colours"s);
const std::string exif = jpegSegment(0xE1, "Exif\0\0words"s);
const std::string remark = jpegSegment(0xFE, "words");

TEST(FileCopy, OfAJpegLosesWhatIsLeftOut)
{
    const std::string tail = "behind it";
    const std::string file = start + jfif + exif + icc + remark + table + scan + end + tail;
    EXPECT_EQ(jpegCopy(file, nothing), file);
    EXPECT_EQ(jpegCopy(file, metadata), start + jfif + icc + table + scan + end);
    EXPECT_EQ(jpegCopy(file, profile), start + jfif + exif + remark + table + scan + end + tail);
    EXPECT_EQ(jpegCopy(file, both), start + jfif + table + scan + end);
}

TEST(FileCopy, OfAJpegKeepsOnlyWhatSaysHowColoursAreStored)
{
    const std::string named =
        jpegSegment(0xE0, "JFIF\0\1\1\1\1\x2C\1\x2C\1\1\1\2\3"s); // a density, a small copy
    const std::string plain = jpegSegment(0xE0, "JFIF\0\1\1\0\0\1\0\1\0\0"s);
    const std::string adobe = jpegSegment(0xEE, "Adobe\0\x64\0\0\0\0\1"s);
    const std::string longAdobe = jpegSegment(0xEE, "Adobe\0\x64\0\0\0\0\1 and words"s);
    const std::string others = jpegSegment(0xE0, "JFXX\0\x10words"s) + jpegSegment(0xE0, "JFIF\0"s) +
                               jpegSegment(0xEE, "Adobe"s) + jpegSegment(0xE2, "words"s) +
                               jpegSegment(0xEF, "words"s) + jpegSegment(0xE8, ""s);
    EXPECT_EQ(jpegCopy(start + named + others + longAdobe + table + scan + end, metadata),
              start + plain + adobe + table + scan + end);
}

TEST(FileCopy, OfAJpegHasEveryScanAndNothingBetween)
{
    const std::string file = start + table + scan + remark + exif + table + "\xFF\xFF"s + scan + end;
    EXPECT_EQ(jpegCopy(file, both), start + table + scan + table + scan + end);
    EXPECT_EQ(jpegCopy(file, nothing), file);
}

TEST(FileCopy, OfAJpegAsLibrariesWriteItLosesNoPartOfThePicture)
{
    for (const test::JpegKind& kind : {test::JpegKind{.name = "plain"},
                                       {.name = "progressive", .isProgressive = true, .isHalved = true},
                                       {.name = "restarts", .restartRows = 1},
                                       {.name = "arithmetic", .isArithmetic = true},
                                       {.name = "inks", .components = 4},
                                       {.name = "grey", .components = 1},
                                       {.name = "scans", .hasScanForEach = true}}) {
        const std::string file = test::jpegOf(kind, 203, 157);
        EXPECT_TRUE(jpegCopy(file, both) == file) << kind.name;
        EXPECT_TRUE(jpegCopy(start + exif + file.substr(2) + "tail", both) == file) << kind.name;
    }
}

TEST(FileCopy, OfAJpegIsRefusedWhereItsPartsCannotBeTold)
{
    for (const std::string& file :
         {start + table + scan, start + table, start + jfif + "words" + table + scan + end,
          start + start + table + scan + end, start + table + scan.substr(0, 3), start,
          start + "\xFF\xDB\0\1"s + scan + end, start + "\xFF\xE1\xFF\xFF words"s, ""s}) {
        EXPECT_FALSE(jpegCopy(file, both)) << testing::PrintToString(file);
        EXPECT_FALSE(jpegCopy(file, metadata)) << testing::PrintToString(file);
    }
}

// Their places are counted from the list.
TEST(FileCopy, OfAJpegThatListsFurtherPicturesLosesAllOfThemOrNothing)
{
    const std::string list = jpegSegment(0xE2, "MPF\0words"s);
    const std::string file = start + list + icc + table + scan + end + start + table + scan + end;
    EXPECT_EQ(jpegCopy(file, nothing), file);
    EXPECT_FALSE(jpegCopy(file, profile));
    EXPECT_EQ(jpegCopy(file, metadata), start + icc + table + scan + end);
}

const test::PngChunks plainPng = {{"IHDR", "head"}, {"PLTE", "colours"}, {"tRNS", "0"},
                                  {"IDAT", "a"},    {"IDAT", "b"},       {"IEND", ""}};

// With these between the head and the palette.
std::string pngWith(const test::PngChunks& chunks)
{
    test::PngChunks all = plainPng;
    all.insert(all.begin() + 1, chunks.begin(), chunks.end());
    return pngOf(all);
}

TEST(FileCopy, OfAPngLosesWhatIsLeftOut)
{
    const test::PngChunks colors = {{"iCCP", "p"}, {"sRGB", "s"}, {"gAMA", "g"}, {"cHRM", "c"},
                                    {"cICP", "c"}, {"mDCV", "m"}, {"cLLI", "l"}};
    const test::PngChunks words = {{"tEXt", "t"}, {"zTXt", "z"}, {"iTXt", "i"}, {"eXIf", "e"}, {"tIME", "m"},
                                   {"pHYs", "p"}, {"bKGD", "b"}, {"sBIT", "s"}, {"caBX", "c"}};
    test::PngChunks everything = colors;
    everything.insert(everything.end(), words.begin(), words.end());
    const std::string file = pngWith(everything) + "behind it";
    EXPECT_EQ(pngCopy(file, nothing), file);
    EXPECT_EQ(pngCopy(file, metadata), pngWith(colors));
    EXPECT_EQ(pngCopy(file, profile), pngWith(words) + "behind it");
    EXPECT_EQ(pngCopy(file, both), pngOf(plainPng));
}

TEST(FileCopy, OfAPngIsRefusedWhereItIsAnAnimationOrEndsEarly)
{
    for (const char* type : {"acTL", "fcTL", "fdAT"}) {
        EXPECT_FALSE(pngCopy(pngWith({{type, "frames"}}), nothing)) << type;
        EXPECT_FALSE(pngCopy(pngWith({{type, "frames"}}), both)) << type;
    }
    const std::string file = pngOf(plainPng);
    for (const std::size_t missing : {1U, 5U, 13U, 20U})
        EXPECT_FALSE(pngCopy(file.substr(0, file.size() - missing), nothing)) << missing;
}

TEST(FileCopy, IsRefusedToOtherTypes)
{
    EXPECT_FALSE(copyOf("GIF89a", "com.compuserve.gif", nothing));
    EXPECT_FALSE(copyOf("words", "public.text", nothing));
}

TEST(FileCopy, SaysWhyItCannotBeWritten)
{
    const test::OpenFile file(start + table + scan + end);
    OutputFile full(FileDescriptor(::open("/dev/full", O_WRONLY | O_CLOEXEC)), "full");
    EXPECT_FALSE(copyFile(file.get(), "public.jpeg", both, full));
    EXPECT_FALSE(copyFile(file.get(), "public.jpeg", nothing, full));
}

} // namespace
} // namespace lumora
