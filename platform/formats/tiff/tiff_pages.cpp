// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_pages.h"

#include "system/file_bytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace lumora {
namespace {

constexpr std::size_t entrySize = 12;

class Pages
{
public:
    explicit Pages(int descriptor)
        : m_descriptor(descriptor), m_isBigEndian(bytesAt(descriptor, 0, 2) == "MM")
    {
    }

    std::optional<std::uint64_t> number(std::uint64_t at, std::size_t size) const
    {
        const auto bytes = bytesAt(m_descriptor, at, size);
        if (!bytes) return std::nullopt;
        return number(*bytes, 0, size);
    }

    // The first number of the directory's field; 0 without it.
    std::uint64_t field(std::uint64_t directory, std::uint64_t tag, std::size_t count) const
    {
        const auto entries = bytesAt(m_descriptor, directory + 2, count * entrySize);
        for (std::size_t at = 0; entries && at < entries->size(); at += entrySize) {
            constexpr std::uint64_t twoBytes = 3;
            if (number(*entries, at, 2) != tag) continue;
            const std::size_t size = number(*entries, at + 2, 2) == twoBytes ? 2 : 4;
            const bool isInEntry = size * number(*entries, at + 4, 4) <= 4;
            if (isInEntry) return number(*entries, at + 8, size);
            return number(number(*entries, at + 8, 4), size).value_or(0);
        }
        return 0;
    }

private:
    std::uint64_t number(std::string_view bytes, std::size_t at, std::size_t size) const
    {
        return m_isBigEndian ? bigEndianAt(bytes, at, size) : littleEndianAt(bytes, at, size);
    }

    int m_descriptor;
    bool m_isBigEndian;
};

} // namespace

TiffPages tiffPages(int descriptor)
{
    constexpr std::uint64_t plainTiff = 42;
    constexpr std::uint64_t kindOfPage = 0x00FE;
    constexpr std::uint64_t smallCopy = 1;
    constexpr std::uint64_t bitsOfComponent = 0x0102;
    constexpr int mostPages = 100'000; // directories may lead back to each other
    const Pages file(descriptor);
    if (file.number(2, 2) != plainTiff) return {};
    TiffPages pages;
    auto directory = file.number(4, 4);
    for (int looked = 0; directory.value_or(0) != 0; ++looked) {
        const auto count = file.number(*directory, 2);
        if (!count || looked == mostPages) return {};
        if (looked == 0) pages.bits = static_cast<int>(file.field(*directory, bitsOfComponent, *count));
        if ((file.field(*directory, kindOfPage, *count) & smallCopy) == 0) ++pages.count;
        directory = file.number(*directory + 2 + *count * entrySize, 4);
    }
    return pages;
}

} // namespace lumora
