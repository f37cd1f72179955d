// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/utf8.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

using namespace std::string_view_literals;

std::string encoded(char32_t value)
{
    std::string text;
    appendUtf8(text, value);
    return text;
}

TEST(Utf8, EncodesEachLength)
{
    EXPECT_EQ(encoded(0x00), "\0"sv);
    EXPECT_EQ(encoded(0x7F), "\x7F");
    EXPECT_EQ(encoded(0x80), "\xC2\x80");
    EXPECT_EQ(encoded(0x7FF), "\xDF\xBF");
    EXPECT_EQ(encoded(0x800), "\xE0\xA0\x80");
    EXPECT_EQ(encoded(0xEF80), "\xEE\xBE\x80");
    EXPECT_EQ(encoded(0xFFFF), "\xEF\xBF\xBF");
    EXPECT_EQ(encoded(0x10000), "\xF0\x90\x80\x80");
    EXPECT_EQ(encoded(0x10FFFF), "\xF4\x8F\xBF\xBF");
}

TEST(Utf8, IsAppendedToWhatIsThere)
{
    std::string text = "caf";
    appendUtf8(text, 0xE9);
    EXPECT_EQ(text, "caf\xC3\xA9");
}

TEST(Utf8, GivesBackEveryCharacterWhateverFollows)
{
    for (char32_t value = 0; value <= 0x10FFFF; ++value) {
        if (value == 0xD800) value = 0xE000;
        const std::string alone = encoded(value);
        const auto character = firstCodePoint(alone + "\xBF");
        ASSERT_TRUE(character) << std::hex << static_cast<unsigned>(value);
        ASSERT_EQ(character->value, value);
        ASSERT_EQ(character->length, alone.size());
    }
}

class MalformedUtf8 : public testing::TestWithParam<std::string_view>
{
};

TEST_P(MalformedUtf8, BeginsWithNoCharacter)
{
    EXPECT_FALSE(firstCodePoint(GetParam()));
    EXPECT_FALSE(isUtf8(GetParam()));
    EXPECT_FALSE(isUtf8("before" + std::string(GetParam())));
}

INSTANTIATE_TEST_SUITE_P(StrayBytes, MalformedUtf8,
                         testing::Values("\x80"sv, "\xBF"sv, "\xC3("sv, "\xE2\x82("sv, "\xF0\x9F\x98("sv,
                                         "\xC3\xC3\xA9"sv, "\xC3\0"sv, "\xFE"sv, "\xFF"sv));
INSTANTIATE_TEST_SUITE_P(CutShort, MalformedUtf8, testing::Values("\xC3"sv, "\xE2\x82"sv, "\xF0\x9F\x98"sv));
INSTANTIATE_TEST_SUITE_P(OverlongForms, MalformedUtf8,
                         testing::Values("\xC0\x80"sv, "\xC1\xBF"sv, "\xE0\x9F\xBF"sv, "\xF0\x8F\xBF\xBF"sv));
INSTANTIATE_TEST_SUITE_P(Surrogates, MalformedUtf8, testing::Values("\xED\xA0\x80"sv, "\xED\xBF\xBF"sv));
INSTANTIATE_TEST_SUITE_P(AboveTheLast, MalformedUtf8,
                         testing::Values("\xF4\x90\x80\x80"sv, "\xF5\x80\x80\x80"sv, "\xF8\x88\x80\x80\x80"sv,
                                         "\xFC\x84\x80\x80\x80\x80"sv));

TEST(WholeUtf8, IsEveryTextOfWellFormedSequences)
{
    EXPECT_TRUE(isUtf8(""));
    EXPECT_TRUE(isUtf8("a\0b"sv));
    EXPECT_TRUE(isUtf8("caf\xC3\xA9 \xF0\x9F\x98\x80"));
    EXPECT_FALSE(isUtf8("caf\xE9 au lait"));
}

} // namespace
} // namespace lumora
