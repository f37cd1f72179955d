// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/memory_file.h"

#include "system/mapped_file.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace lumora {
namespace {

TEST(MemoryFile, IsFilledThroughItsDescriptor)
{
    const auto file = makeMemoryFile(4);
    ASSERT_TRUE(file);
    EXPECT_EQ(::write(file->get(), "abcd", 4), 4);
    const auto bytes = MappedFile::map(file->get());
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->bytes().size(), 4U);
    EXPECT_EQ(bytes->bytes()[3], std::byte{'d'});
}

// A reader of its bytes would die of it.
TEST(MemoryFile, KeepsItsSizeWhateverItsWriterDoes)
{
    const auto file = makeMemoryFile(4);
    ASSERT_TRUE(file);
    EXPECT_NE(::ftruncate(file->get(), 0), 0);
    EXPECT_NE(::ftruncate(file->get(), 8), 0);
    EXPECT_EQ(::write(file->get(), "abcd", 4), 4);
    EXPECT_LT(::write(file->get(), "e", 1), 1);
    EXPECT_EQ(::lseek(file->get(), 0, SEEK_END), 4);
}

} // namespace
} // namespace lumora
