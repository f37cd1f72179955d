// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "descriptor_io.h"

#include "system/file_descriptor.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <exiv2/error.hpp>
#include <gtest/gtest.h>

#include <fcntl.h>

#include <algorithm>
#include <string>

namespace lumora {
namespace {

using Io = Exiv2::BasicIo;

std::string pattern(std::size_t size)
{
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(i * 31 + i / 256 * 7);
    return bytes;
}

std::string textOf(const Exiv2::DataBuf& bytes)
{
    return {bytes.pData_, bytes.pData_ + bytes.size_};
}

// A file of several of the reader's buffers.
class DescriptorIo : public testing::Test
{
protected:
    DescriptorIo()
    {
        test::writeFile(m_path, m_content);
        m_file = FileDescriptor(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC));
        m_io = openedForReading(m_file.get());
        m_io->open();
    }

    const test::TemporaryDirectory m_folder;
    const std::filesystem::path m_path = m_folder / "a";
    const std::string m_content = pattern(50'000);
    FileDescriptor m_file;
    Io::AutoPtr m_io;
};

TEST_F(DescriptorIo, ReadsTheWholeFileInPiecesOfAnySize)
{
    EXPECT_EQ(m_io->size(), m_content.size());
    for (const long piece : {1L, 7L, 16384L, 20'001L, 50'000L}) {
        m_io->seek(0, Io::beg);
        std::string read;
        while (read.size() < m_content.size()) {
            const auto bytes = textOf(m_io->read(piece));
            ASSERT_FALSE(bytes.empty());
            read += bytes;
            EXPECT_EQ(m_io->tell(), static_cast<long>(read.size()));
        }
        EXPECT_EQ(read, m_content) << piece;
    }
}

TEST_F(DescriptorIo, ReadsFromWhereItWasSent)
{
    for (const long at : {49'990L, 3L, 16'380L, 0L, 33'000L}) {
        ASSERT_EQ(m_io->seek(at, Io::beg), 0);
        EXPECT_EQ(m_io->getb(), static_cast<unsigned char>(m_content[static_cast<std::size_t>(at)])) << at;
        EXPECT_EQ(textOf(m_io->read(9)), m_content.substr(static_cast<std::size_t>(at) + 1, 9)) << at;
    }
    m_io->seek(-5, Io::end);
    m_io->seek(2, Io::cur);
    EXPECT_EQ(textOf(m_io->read(3)), m_content.substr(m_content.size() - 3));
}

TEST_F(DescriptorIo, SaysWhenTheFileEnds)
{
    m_io->seek(-4, Io::end);
    EXPECT_EQ(m_io->read(4).size_, 4);
    EXPECT_FALSE(m_io->eof());
    EXPECT_EQ(m_io->getb(), EOF);
    EXPECT_TRUE(m_io->eof());
    EXPECT_EQ(m_io->error(), 0);
    m_io->seek(0, Io::beg);
    EXPECT_FALSE(m_io->eof());
}

// A damaged file claims lengths as it likes.
TEST_F(DescriptorIo, SetsAsideNoMoreThanIsThere)
{
    m_io->seek(49'000, Io::beg);
    const Exiv2::DataBuf bytes = m_io->read(1L << 45);
    EXPECT_EQ(textOf(bytes), m_content.substr(49'000));
    EXPECT_TRUE(m_io->eof());
    EXPECT_EQ(m_io->read(-1).size_, 0);
}

TEST_F(DescriptorIo, StaysWhereItIsWhenItIsSentBeforeTheStart)
{
    m_io->seek(100, Io::beg);
    EXPECT_NE(m_io->seek(-101, Io::cur), 0);
    EXPECT_NE(m_io->seek(-1, Io::beg), 0);
    EXPECT_EQ(m_io->tell(), 100);
    ASSERT_EQ(m_io->seek(10, Io::end), 0);
    EXPECT_EQ(m_io->read(1).size_, 0);
    EXPECT_TRUE(m_io->eof());
}

TEST_F(DescriptorIo, ShowsTheFileAsMemory)
{
    const auto* bytes = m_io->mmap();
    ASSERT_NE(bytes, nullptr);
    EXPECT_TRUE(std::equal(m_content.begin(), m_content.end(), bytes,
                           [](char a, Exiv2::byte b) { return static_cast<unsigned char>(a) == b; }));
    EXPECT_EQ(m_io->munmap(), 0);
}

TEST_F(DescriptorIo, LeavesTheDescriptorOpenAndWhereItWas)
{
    lseek(m_file.get(), 7, SEEK_SET);
    m_io->read(30'000);
    m_io->seek(0, Io::end);
    m_io->close();
    m_io.reset();
    EXPECT_EQ(lseek(m_file.get(), 0, SEEK_CUR), 7);
}

TEST_F(DescriptorIo, NeverWrites)
{
    const Exiv2::byte byte = 'x';
    EXPECT_EQ(m_io->write(&byte, 1), 0);
    EXPECT_EQ(m_io->write(*m_io), 0);
    EXPECT_EQ(m_io->putb(byte), EOF);
    Exiv2::MemIo other;
    EXPECT_THROW(m_io->transfer(other), Exiv2::Error);
    EXPECT_EQ(test::readFile(m_path), m_content);
}

TEST_F(DescriptorIo, KeepsToItsFileWhenTheNameLeadsElsewhere)
{
    test::writeFile(m_folder / "b", "another file");
    std::filesystem::rename(m_folder / "b", m_path);
    EXPECT_EQ(textOf(m_io->read(50'000)), m_content);
}

TEST(DescriptorIoOfNothing, IsEmptyAndSaysThatReadingFailed)
{
    const auto io = openedForReading(-1);
    EXPECT_EQ(io->size(), 0U);
    EXPECT_EQ(io->mmap(), nullptr);
    Exiv2::byte byte = 0;
    EXPECT_EQ(io->read(&byte, 1), 0);
    EXPECT_NE(io->error(), 0);
}

} // namespace
} // namespace lumora
