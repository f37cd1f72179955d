// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/memory_file.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/mman.h>

namespace lumora {

Result<FileDescriptor> makeMemoryFile(std::size_t bytes)
{
    FileDescriptor file(::memfd_create("lumora", MFD_CLOEXEC | MFD_ALLOW_SEALING));
    if (!file.isOpen()) return errno == ENOMEM ? outOfMemory() : Error{std::strerror(errno)};
    if (::ftruncate(file.get(), static_cast<off_t>(bytes)) != 0 ||
        ::fcntl(file.get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL) != 0)
        return errno == ENOMEM ? outOfMemory() : Error{std::strerror(errno)};
    return file;
}

} // namespace lumora
