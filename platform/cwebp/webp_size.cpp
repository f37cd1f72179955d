// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "webp_size.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <string_view>

namespace lumora {
namespace {

constexpr std::size_t headSize = 30; // up to the dimensions of whichever first chunk
using Head = std::array<unsigned char, headSize>;

std::uint32_t numberAt(const Head& head, std::size_t at, std::size_t bytes)
{
    std::uint32_t number = 0;
    for (std::size_t i = bytes; i-- > 0;)
        number = number << 8U | head.at(at + i);
    return number;
}

bool hasLetters(const Head& head, std::size_t at, std::string_view letters)
{
    for (std::size_t i = 0; i < letters.size(); ++i) {
        if (head.at(at + i) != static_cast<unsigned char>(letters[i])) return false;
    }
    return true;
}

} // namespace

std::optional<std::pair<std::int64_t, std::int64_t>> webpSize(int descriptor)
{
    constexpr std::size_t chunk = 12;
    constexpr std::uint32_t beforeContent = 8; // letters and length of the whole
    Head head{};
    struct stat status = {};
    if (fstat(descriptor, &status) != 0 ||
        pread(descriptor, head.data(), head.size(), 0) != ssize_t{headSize})
        return std::nullopt;
    if (!hasLetters(head, 0, "RIFF") || !hasLetters(head, 8, "WEBP") ||
        std::int64_t{numberAt(head, 4, 4)} + beforeContent != status.st_size)
        return std::nullopt;

    constexpr std::uint32_t fourteenBits = 0x3FFF;
    if (hasLetters(head, chunk, "VP8 "))
        return std::pair(numberAt(head, chunk + 14, 2) & fourteenBits,
                         numberAt(head, chunk + 16, 2) & fourteenBits);
    if (hasLetters(head, chunk, "VP8L")) {
        const std::uint32_t bits = numberAt(head, chunk + 9, 4);
        return std::pair((bits & fourteenBits) + 1, (bits >> 14U & fourteenBits) + 1);
    }
    if (hasLetters(head, chunk, "VP8X"))
        return std::pair(numberAt(head, chunk + 12, 3) + 1, numberAt(head, chunk + 15, 3) + 1);
    return std::nullopt;
}

} // namespace lumora
