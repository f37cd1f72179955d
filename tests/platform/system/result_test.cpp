// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/result.h"

#include <gtest/gtest.h>

#include <memory>

namespace lumora {
namespace {

TEST(Result, IsAValueOrAnError)
{
    const Result<int> value = 7;
    ASSERT_TRUE(value);
    EXPECT_EQ(*value, 7);

    const Result<int> error = Error{"no luck"};
    ASSERT_FALSE(error);
    EXPECT_EQ(error.error().description, "no luck");
}

TEST(Result, TellsAnEmptyValueFromAnError)
{
    EXPECT_TRUE(Result<std::string>(std::string()));
    EXPECT_FALSE(Result<std::string>(Error{}));
    EXPECT_TRUE(Status(Done{}));
    EXPECT_FALSE(Status(Error{}));
}

TEST(Result, GivesItsValueAway)
{
    Result<std::unique_ptr<int>> owner = std::make_unique<int>(7);
    ASSERT_TRUE(owner);
    const std::unique_ptr<int> taken = std::move(owner).value();
    ASSERT_TRUE(taken);
    EXPECT_EQ(*taken, 7);
}

TEST(Result, LetsItsValueBeChanged)
{
    Result<std::string> text = std::string("a");
    *text += "b";
    text->push_back('c');
    text.value() += "d";
    EXPECT_EQ(*text, "abcd");
}

TEST(Result, ThrowsRatherThanInventAValue)
{
    const Result<int> error = Error{"no luck"};
    EXPECT_THROW(static_cast<void>(*error), std::bad_variant_access);
    const Result<int> value = 7;
    EXPECT_THROW(static_cast<void>(value.error()), std::bad_variant_access);
}

} // namespace
} // namespace lumora
