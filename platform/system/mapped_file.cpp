// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/mapped_file.h"

#include <cerrno>
#include <cstring>
#include <sys/mman.h>
#include <sys/stat.h>

namespace lumora {

Result<MappedFile> MappedFile::map(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) return Error{std::strerror(errno)};
    const auto size = static_cast<std::size_t>(status.st_size);
    void* const memory = ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE, descriptor, 0);
    if (memory == MAP_FAILED) return errno == ENOMEM ? outOfMemory() : Error{std::strerror(errno)};
    return MappedFile(std::span(static_cast<std::byte*>(memory), size));
}

MappedFile::~MappedFile()
{
    if (!m_bytes.empty()) ::munmap(m_bytes.data(), m_bytes.size());
}

} // namespace lumora
