// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/file_bytes.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

namespace lumora {
namespace {

constexpr std::size_t largestUnchecked = 4096; // what costs nothing to set aside in vain

bool hasBytesAt(int descriptor, std::uint64_t offset, std::size_t size)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) return false;
    const auto length = static_cast<std::uint64_t>(std::max<off_t>(0, status.st_size));
    return offset <= length && size <= length - offset;
}

} // namespace

std::optional<std::string> bytesAt(int descriptor, std::uint64_t offset, std::size_t size)
{
    if (size > largestUnchecked && !hasBytesAt(descriptor, offset, size)) return std::nullopt;
    std::string bytes(size, '\0');
    if (pread(descriptor, bytes.data(), size, static_cast<off_t>(offset)) != static_cast<ssize_t>(size))
        return std::nullopt;
    return bytes;
}

std::uint64_t bigEndianAt(std::string_view bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || size > bytes.size() - at) return 0;
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < size; ++i)
        number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

std::uint64_t littleEndianAt(std::string_view bytes, std::size_t at, std::size_t size)
{
    if (at > bytes.size() || size > bytes.size() - at) return 0;
    std::uint64_t number = 0;
    for (std::size_t i = size; i-- > 0;)
        number = number << 8U | static_cast<unsigned char>(bytes[at + i]);
    return number;
}

} // namespace lumora
