// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/output_file.h"

#include "file_errors.h"

#include <cerrno>
#include <sys/sendfile.h>
#include <unistd.h>

namespace lumora {

Status OutputFile::append(std::span<const std::byte> bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(m_descriptor.get(), bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return fileError(m_name, "written", errno);
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return Done{};
}

Status OutputFile::appendFile(int descriptor)
{
    constexpr std::size_t atOnce = std::size_t{1} << 30U;
    for (;;) {
        const ssize_t sent = ::sendfile(m_descriptor.get(), descriptor, nullptr, atOnce);
        if (sent == 0) return Done{};
        if (sent < 0 && errno != EINTR) return fileError(m_name, "written", errno);
    }
}

// Shortened last: the bytes may lie in a mapping of this very file.
Status OutputFile::rewrite(std::span<const std::byte> bytes)
{
    if (::lseek(m_descriptor.get(), 0, SEEK_SET) != 0) return fileError(m_name, "written", errno);
    if (auto status = append(bytes); !status) return status;
    if (::ftruncate(m_descriptor.get(), static_cast<off_t>(bytes.size())) != 0)
        return fileError(m_name, "written", errno);
    return Done{};
}

} // namespace lumora
