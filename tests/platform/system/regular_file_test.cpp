// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/regular_file.h"

#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <span>

namespace lumora {
namespace {

class RegularFile : public testing::Test
{
protected:
    Result<std::vector<std::byte>> bytesOf(const std::string& content, std::size_t most) const
    {
        test::writeFile(m_folder / "a.png", content);
        const auto file = openRegularFile(m_folder / "a.png");
        if (!file) return file.error();
        return readAll(file->get(), most);
    }

    const test::TemporaryDirectory m_folder;
};

TEST_F(RegularFile, IsReadWhole)
{
    std::string content(300'000, 'x');
    content[200'000] = '\xFF';
    content[250'000] = '\0';
    const auto bytes = bytesOf(content, content.size());
    ASSERT_TRUE(bytes) << bytes.error().description;
    EXPECT_TRUE(std::ranges::equal(*bytes, std::as_bytes(std::span(content))));
    const auto none = bytesOf("", 0);
    ASSERT_TRUE(none);
    EXPECT_TRUE(none->empty());
}

TEST_F(RegularFile, IsNotReadAboveTheMost)
{
    const auto bytes = bytesOf("four", 3);
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.error().description, "too large a file");
}

// Decoders read the same descriptor on from where they are.
TEST_F(RegularFile, IsReadWithoutMovingItsPosition)
{
    test::writeFile(m_folder / "a.png", "12345");
    const auto file = openRegularFile(m_folder / "a.png");
    ASSERT_TRUE(file);
    ASSERT_EQ(::lseek(file->get(), 3, SEEK_SET), 3);
    const auto bytes = readAll(file->get(), 5);
    ASSERT_TRUE(bytes);
    EXPECT_EQ(bytes->size(), 5U);
    EXPECT_EQ(::lseek(file->get(), 0, SEEK_CUR), 3);
}

TEST_F(RegularFile, IsFoundThroughALink)
{
    test::writeFile(m_folder / "a.png", "pixels");
    std::filesystem::create_symlink("a.png", m_folder / "link.png");
    EXPECT_TRUE(openRegularFile(m_folder / "link.png"));
}

TEST_F(RegularFile, IsNotInheritedByOtherPrograms)
{
    test::writeFile(m_folder / "a.png", "pixels");
    const auto file = openRegularFile(m_folder / "a.png");
    ASSERT_TRUE(file);
    EXPECT_NE(::fcntl(file->get(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST_F(RegularFile, IsNoFolder)
{
    const auto file = openRegularFile(m_folder.path());
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error().description, "not a file");
}

// Nobody writes into the pipe, so an open that waits would never end.
TEST_F(RegularFile, IsNoPipeAndIsNotWaitedFor)
{
    ASSERT_EQ(::mkfifo((m_folder / "pipe.png").c_str(), 0600), 0);
    const auto file = openRegularFile(m_folder / "pipe.png");
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error().description, "not a file");
}

TEST_F(RegularFile, FailsWithTheSystemsReasonWhenMissing)
{
    const auto file = openRegularFile(m_folder / "missing.png");
    ASSERT_FALSE(file);
    EXPECT_EQ(file.error().description, "No such file or directory");
    const auto bytes = readAll(-1, 10);
    ASSERT_FALSE(bytes);
    EXPECT_EQ(bytes.error().description, "Bad file descriptor");
}

} // namespace
} // namespace lumora
