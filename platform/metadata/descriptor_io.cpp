// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "descriptor_io.h"

#include <exiv2/error.hpp>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

namespace lumora {
namespace {

class DescriptorIo : public Exiv2::BasicIo
{
public:
    DescriptorIo(int descriptor, std::vector<Mask> masks)
        : m_descriptor(descriptor), m_masks(std::move(masks))
    {
        struct stat status = {};
        if (fstat(descriptor, &status) == 0) m_size = static_cast<std::size_t>(status.st_size);
    }
    ~DescriptorIo() override { unmap(); }
    DescriptorIo(const DescriptorIo&) = delete;
    DescriptorIo& operator=(const DescriptorIo&) = delete;

    int open() override
    {
        m_isOpen = true;
        return seek(0, beg);
    }
    int close() override
    {
        unmap();
        m_isOpen = false;
        return 0;
    }
    bool isopen() const override { return m_isOpen; }

    long read(Exiv2::byte* to, long count) override
    {
        long filled = 0;
        while (filled < count) {
            const long taken = takeBuffered(to + filled, count - filled);
            filled += taken;
            if (taken == 0 && !fillBuffer()) break;
        }
        m_isAtEnd = filled < count;
        return filled;
    }
    Exiv2::DataBuf read(long count) override
    {
        // What a damaged file claims is no reason to set memory aside.
        const auto left = static_cast<long>(m_size - std::min(m_size, static_cast<std::size_t>(m_at)));
        Exiv2::DataBuf bytes(std::clamp(count, 0L, left));
        bytes.size_ = read(bytes.pData_, bytes.size_);
        m_isAtEnd = bytes.size_ < count;
        return bytes;
    }
    int getb() override
    {
        Exiv2::byte byte = 0;
        return read(&byte, 1) == 1 ? byte : EOF;
    }

    int seek(long offset, Position from) override
    {
        const long base = from == beg ? 0 : from == cur ? m_at : static_cast<long>(m_size);
        long to = 0;
        if (__builtin_add_overflow(base, offset, &to) || to < 0) return 1;
        m_at = to;
        m_isAtEnd = false;
        return 0;
    }
    long tell() const override { return m_at; }
    std::size_t size() const override { return m_size; }
    int error() const override { return m_hasFailed ? 1 : 0; }
    bool eof() const override { return m_isAtEnd; }

    Exiv2::byte* mmap(bool) override
    {
        if (m_map || m_size == 0) return static_cast<Exiv2::byte*>(m_map);
        void* const map = ::mmap(nullptr, m_size, PROT_READ | PROT_WRITE, MAP_PRIVATE, m_descriptor, 0);
        if (map == MAP_FAILED) throw Exiv2::Error(Exiv2::kerCallFailed, path(), std::strerror(errno), "mmap");
        m_map = map;
        mask(static_cast<Exiv2::byte*>(map), 0, m_size);
        return static_cast<Exiv2::byte*>(m_map);
    }
    int munmap() override
    {
        unmap();
        return 0;
    }

    long write(const Exiv2::byte*, long) override { return 0; }
    long write(BasicIo&) override { return 0; }
    int putb(Exiv2::byte) override { return EOF; }
    void transfer(BasicIo&) override { throw Exiv2::Error(Exiv2::kerFileOpenFailed, path(), "wb", ""); }
    std::string path() const override { return "picture"; }

private:
    void unmap()
    {
        if (m_map) ::munmap(m_map, m_size);
        m_map = nullptr;
    }

    // The bytes are those of the file from `start` on.
    void mask(Exiv2::byte* bytes, std::uint64_t start, std::size_t size) const
    {
        constexpr std::uint64_t longestMask = 8;
        const std::uint64_t from = start - std::min(start, longestMask);
        auto mask = std::ranges::lower_bound(m_masks, from, {}, &Mask::at);
        for (; mask != m_masks.end() && mask->at < start + size; ++mask) {
            for (std::size_t i = 0; i < mask->bytes.size(); ++i) {
                const std::uint64_t at = mask->at + i;
                if (at >= start && at - start < size)
                    bytes[at - start] = static_cast<Exiv2::byte>(mask->bytes[i]);
            }
        }
    }

    long takeBuffered(Exiv2::byte* to, long most)
    {
        const long inBuffer = m_at - m_bufferStart;
        if (inBuffer < 0 || inBuffer >= static_cast<long>(m_buffer.size())) return 0;
        const long count = std::min(most, static_cast<long>(m_buffer.size()) - inBuffer);
        std::memcpy(to, m_buffer.data() + inBuffer, static_cast<std::size_t>(count));
        m_at += count;
        return count;
    }

    bool fillBuffer()
    {
        constexpr std::size_t capacity = 16384; // headers lie at the start, and seeking gives the rest up
        m_buffer.resize(capacity);
        ssize_t count = 0;
        do {
            count = pread(m_descriptor, m_buffer.data(), capacity, m_at);
        } while (count < 0 && errno == EINTR);
        m_hasFailed = m_hasFailed || count < 0;
        m_buffer.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        m_bufferStart = m_at;
        mask(m_buffer.data(), static_cast<std::uint64_t>(m_at), m_buffer.size());
        return !m_buffer.empty();
    }

    int m_descriptor;
    std::vector<Mask> m_masks;
    std::size_t m_size = 0;
    long m_at = 0;
    bool m_isOpen = false;
    bool m_isAtEnd = false;
    bool m_hasFailed = false;
    void* m_map = nullptr;
    std::vector<Exiv2::byte> m_buffer;
    long m_bufferStart = 0;
};

} // namespace

Exiv2::BasicIo::AutoPtr openedForReading(int descriptor, std::vector<Mask> masks)
{
    return Exiv2::BasicIo::AutoPtr(new DescriptorIo(descriptor, std::move(masks)));
}

} // namespace lumora
