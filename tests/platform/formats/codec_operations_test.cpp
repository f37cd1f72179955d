// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What of the image library may run.
#include "format_io.h"

#include "formats/image_source.h"
#include "system/child_process.h"
#include "tests/support/files.h"
#include "tests/support/sample_images.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <vips/vips.h>

#include <algorithm>
#include <cstdlib>
#include <string>
#include <vector>

namespace lumora {
namespace {

using namespace std::string_literals;

// Pictures in formats that the image library can read and that no row names, under the name of one that a row
// does.
const std::vector<std::string> disguised{
    // NOLINTNEXTLINE(bugprone-suspicious-missing-comma): one text on three lines
    "%PDF-1.1\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
    "2 0 obj<</Type/Pages/Kids[3 0 R]/Count 1>>endobj\n"
    "3 0 obj<</Type/Page/Parent 2 0 R/MediaBox[0 0 9 9]>>endobj\ntrailer<</Root 1 0 R>>\n%%EOF\n",
    R"(<svg xmlns="http://www.w3.org/2000/svg" width="9" height="9"></svg>)",
    "\x76\x2F\x31\x01\2\0\0\0channels\0chlist\0"s,
    "8BPS\0\1\0\0\0\0\0\0\0\3\0\0\0\1\0\0\0\1\0\x08\0\3"s,
    "P6\n1 1\n255\nabc",
    "#?RADIANCE\nFORMAT=32-bit_rle_rgbe\n\n-Y 1 +X 1\n\1\1\1\x80",
};

// Whether the name is that of a class which the table names, or of one that belongs to such a class.
bool isNamed(GType type)
{
    const auto covers = [type](const char* operation) {
        const GType named = operation ? g_type_from_name(operation) : 0;
        return named != 0 && g_type_is_a(type, named);
    };
    return std::ranges::any_of(formats(), [&](const Format* format) {
        const Codec& codec = codecOf(*format);
        return covers(codec.reader.operation) || (codec.writer && covers(codec.writer->operation));
    });
}

void* collectAllowed(VipsObjectClass* type, void* names)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): a class of the library's object system
    const auto* operation = reinterpret_cast<VipsOperationClass*>(type);
    if ((operation->flags & VIPS_OPERATION_BLOCKED) == 0 && !isNamed(G_TYPE_FROM_CLASS(type)) &&
        !G_TYPE_IS_ABSTRACT(G_TYPE_FROM_CLASS(type)))
        static_cast<std::vector<std::string>*>(names)->emplace_back(G_OBJECT_CLASS_NAME(type));
    return nullptr;
}

// Started again in a process of its own: the tests of this one have allowed what they make their files with.
TEST(Operations, ThatNoRowNamesStayBlockedAfterAPictureWasRead)
{
    constexpr const char* isFresh = "LUMORA_TEST_FRESH_PROCESS";
    if (!std::getenv(isFresh)) {
        setenv(isFresh, "1", 1);
        const auto outcome =
            runProcess(std::filesystem::read_symlink("/proc/self/exe"),
                       {"--gtest_filter=Operations.ThatNoRowNamesStayBlockedAfterAPictureWasRead"});
        unsetenv(isFresh);
        ASSERT_TRUE(outcome);
        EXPECT_EQ(outcome->exitStatus, 0) << outcome->standardError;
        return;
    }
    const test::TemporaryDirectory folder;
    test::writeFile(folder / "a.png", test::pngClaiming(4, 4));
    ASSERT_TRUE(ImageSource::open(folder / "a.png"));

    std::vector<std::string> allowed;
    vips_class_map_all(g_type_from_name("VipsForeign"), collectAllowed, &allowed);
    EXPECT_THAT(allowed, testing::IsEmpty());
    for (const std::string& content : disguised) {
        const VipsImagePtr picture(vips_image_new_from_buffer(content.data(), content.size(), "", nullptr));
        EXPECT_FALSE(picture) << content.substr(0, 4);
        test::writeFile(folder / "b.png", content);
        const auto source = ImageSource::open(folder / "b.png");
        ASSERT_FALSE(source) << content.substr(0, 4);
        EXPECT_EQ(source.error().description, "not a readable image type");
    }
}

} // namespace
} // namespace lumora
