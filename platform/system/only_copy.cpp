// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/only_copy.h"

#include <sys/xattr.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>

namespace lumora {
namespace {

constexpr const char* attribute = "user.lumora.only-copy";

// FNV-1a, 64 bits (Fowler, Noll, Vo). Without the device, whose number is another after each start.
std::string digestOf(const FileStamp& original)
{
    std::uint64_t hash = 14695981039346656037U;
    for (const std::uint64_t part :
         {original.inode, static_cast<std::uint64_t>(original.size),
          static_cast<std::uint64_t>(original.seconds), static_cast<std::uint64_t>(original.nanoseconds)}) {
        for (unsigned shift = 0; shift < 64; shift += 8)
            hash = (hash ^ (part >> shift & 0xFFU)) * 1099511628211U;
    }
    std::array<char, 17> digits{};
    std::snprintf(digits.data(), digits.size(), "%016llx", static_cast<unsigned long long>(hash));
    return digits.data();
}

} // namespace

void markAsOnlyCopy(const std::filesystem::path& file, const FileStamp& original)
{
    const std::string digest = digestOf(original);
    static_cast<void>(::lsetxattr(file.c_str(), attribute, digest.data(), digest.size(), 0));
}

void unmarkAsOnlyCopy(const std::filesystem::path& file)
{
    static_cast<void>(::lremovexattr(file.c_str(), attribute));
}

bool isOnlyCopyOfAnother(const std::filesystem::path& file, const std::filesystem::path& input)
{
    std::array<char, 64> digest{};
    const ssize_t length = ::lgetxattr(file.c_str(), attribute, digest.data(), digest.size());
    if (length <= 0) return false;
    const auto stamp = fileStamp(input);
    return !stamp || std::string(digest.data(), static_cast<std::size_t>(length)) != digestOf(*stamp);
}

} // namespace lumora
