// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "file_errors.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace lumora {
namespace {

TEST(FileError, NamesTheFileWhatWasTriedAndTheReason)
{
    EXPECT_EQ(fileError("/home/me/a.png", "removed", EACCES).description,
              "a.png could not be removed: Permission denied");
}

TEST(FileError, KeepsTheBytesOfTheName)
{
    EXPECT_EQ(fileError("/home/\xFF \xC3\xA9.png", "written", ENOSPC).description,
              "\xFF \xC3\xA9.png could not be written: No space left on device");
}

TEST(FileError, NamesThePathWhereItHasNoLastPart)
{
    EXPECT_EQ(fileError("/", "copied", EISDIR).description, "/ could not be copied: Is a directory");
}

} // namespace
} // namespace lumora
