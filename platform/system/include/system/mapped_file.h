// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The bytes of a file without a copy of them. For files of our own only: when somebody shortens the file
// meanwhile, a look at the bytes that are gone ends the program. Changes of the bytes stay in memory.
#pragma once

#include "system/result.h"

#include <cstddef>
#include <span>
#include <utility>

namespace lumora {

class MappedFile
{
public:
    // The descriptor stays the caller's. Fails for an empty file.
    static Result<MappedFile> map(int descriptor);
    MappedFile(MappedFile&& other) noexcept : m_bytes(std::exchange(other.m_bytes, {})) {}
    MappedFile& operator=(MappedFile&& other) noexcept
    {
        std::swap(m_bytes, other.m_bytes);
        return *this;
    }
    ~MappedFile();

    std::span<std::byte> bytes() const { return m_bytes; }

private:
    explicit MappedFile(std::span<std::byte> bytes) : m_bytes(bytes) {}

    std::span<std::byte> m_bytes;
};

} // namespace lumora
