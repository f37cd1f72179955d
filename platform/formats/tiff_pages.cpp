// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff_pages.h"

#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace lumora {
namespace {

constexpr std::size_t entrySize = 12;

class TiffFile
{
public:
    explicit TiffFile(int descriptor) : m_descriptor(descriptor)
    {
        std::array<unsigned char, 2> order{};
        m_isBigEndian = read(0, order) && order[0] == 'M';
    }

    std::optional<std::uint32_t> number(std::uint64_t at, std::size_t size) const
    {
        std::array<unsigned char, 4> bytes{};
        if (!read(at, std::span(bytes).first(size))) return std::nullopt;
        return number(std::span(bytes).first(size));
    }

    // The first number of the directory's field; 0 without it.
    std::uint32_t field(std::uint64_t directory, std::uint32_t tag, std::size_t count) const
    {
        std::vector<unsigned char> entries(count * entrySize);
        if (!read(directory + 2, entries)) return 0;
        for (std::size_t at = 0; at < entries.size(); at += entrySize) {
            const auto entry = std::span(entries).subspan(at, entrySize);
            constexpr std::uint32_t twoBytes = 3;
            if (number(entry.first(2)) != tag) continue;
            const std::size_t size = number(entry.subspan(2, 2)) == twoBytes ? 2 : 4;
            const bool isInEntry = size * number(entry.subspan(4, 4)) <= 4;
            if (isInEntry) return number(entry.subspan(8, size));
            return number(number(entry.subspan(8, 4)), size).value_or(0);
        }
        return 0;
    }

private:
    bool read(std::uint64_t at, std::span<unsigned char> to) const
    {
        return pread(m_descriptor, to.data(), to.size(), static_cast<off_t>(at)) ==
               static_cast<ssize_t>(to.size());
    }

    std::uint32_t number(std::span<const unsigned char> bytes) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            value = value << 8U | bytes[m_isBigEndian ? i : bytes.size() - 1 - i];
        return value;
    }

    int m_descriptor;
    bool m_isBigEndian = false;
};

} // namespace

TiffPages tiffPages(int descriptor)
{
    constexpr std::uint32_t plainTiff = 42;
    constexpr std::uint32_t kindOfPage = 0x00FE;
    constexpr std::uint32_t smallCopy = 1;
    constexpr std::uint32_t bitsOfComponent = 0x0102;
    constexpr int mostPages = 100'000; // directories may lead back to each other
    const TiffFile file(descriptor);
    if (file.number(2, 2) != plainTiff) return {};
    TiffPages pages;
    auto directory = file.number(4, 4);
    for (int looked = 0; directory.value_or(0) != 0; ++looked) {
        const auto count = file.number(*directory, 2);
        if (!count || looked == mostPages) return {};
        if (looked == 0) pages.bits = static_cast<int>(file.field(*directory, bitsOfComponent, *count));
        if ((file.field(*directory, kindOfPage, *count) & smallCopy) == 0) ++pages.count;
        directory = file.number(std::uint64_t{*directory} + 2 + *count * entrySize, 4);
    }
    return pages;
}

} // namespace lumora
