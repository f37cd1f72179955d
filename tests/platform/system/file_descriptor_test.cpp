// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/file_descriptor.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <fcntl.h>

namespace lumora {
namespace {

int openNumber()
{
    return ::open("/dev/null", O_RDONLY | O_CLOEXEC);
}

bool isOpenNumber(int number)
{
    return ::fcntl(number, F_GETFD) >= 0;
}

TEST(FileDescriptor, IsClosedWithItsOwner)
{
    const int number = openNumber();
    {
        const FileDescriptor owner(number);
        EXPECT_TRUE(owner.isOpen());
        EXPECT_EQ(owner.get(), number);
    }
    EXPECT_FALSE(isOpenNumber(number));
}

TEST(FileDescriptor, IsClosedOnceByTheLastOfItsOwners)
{
    const int number = openNumber();
    FileDescriptor first(number);
    {
        const FileDescriptor second(std::move(first));
        EXPECT_EQ(second.get(), number);
    }
    EXPECT_FALSE(isOpenNumber(number));
    EXPECT_FALSE(first.isOpen()); // NOLINT(bugprone-use-after-move): what is left of it is the point
}

TEST(FileDescriptor, ClosesWhatItHeldWhenItIsGivenAnother)
{
    const int before = openNumber();
    const int after = openNumber();
    FileDescriptor owner(before);
    owner = FileDescriptor(after);
    EXPECT_EQ(owner.get(), after);
    EXPECT_FALSE(isOpenNumber(before));
    EXPECT_TRUE(isOpenNumber(after));
}

TEST(FileDescriptor, StaysOpenWhenReleased)
{
    const int number = openNumber();
    {
        FileDescriptor owner(number);
        EXPECT_EQ(owner.release(), number);
        EXPECT_FALSE(owner.isOpen());
    }
    EXPECT_TRUE(isOpenNumber(number));
    ::close(number);
}

TEST(FileDescriptor, TellsWhetherClosingWorked)
{
    FileDescriptor good(openNumber());
    EXPECT_TRUE(good.close());
    EXPECT_FALSE(good.isOpen());

    const int number = openNumber();
    FileDescriptor bad(number);
    ::close(number);
    EXPECT_FALSE(bad.close());
    EXPECT_EQ(errno, EBADF);
}

TEST(FileDescriptor, HoldsNothingUnlessGiven)
{
    EXPECT_FALSE(FileDescriptor().isOpen());
    EXPECT_TRUE(FileDescriptor(0).release() == 0);
}

} // namespace
} // namespace lumora
