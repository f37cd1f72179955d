// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/name_case.h"

#include "system/file_descriptor.h"
#include "system/utf8.h"

#include <glib.h>

#include <fcntl.h>
#include <linux/fs.h>
#include <linux/magic.h>
#include <sys/ioctl.h>
#include <sys/statfs.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <memory>

namespace lumora {
namespace {

// statfs(2) names them; the kernel's header lacks some.
constexpr std::array<std::uint32_t, 11> kindsThatMayIgnoreCase{
    MSDOS_SUPER_MAGIC,
    EXFAT_SUPER_MAGIC,
    FUSE_SUPER_MAGIC, // whatever is behind it: memory cards, file systems of other systems
    SMB_SUPER_MAGIC,
    CIFS_SUPER_MAGIC,
    SMB2_SUPER_MAGIC,
    V9FS_MAGIC, // shares of a host with its guest
    0x786F4256, // the same, VBOX
    0x7366746E, // NTFS
    0x4244,     // HFS
    0x482B,     // HFS+
};

struct GlibFree
{
    void operator()(char* text) const { ::g_free(text); }
};
using Text = std::unique_ptr<char, GlibFree>;

// Some file systems leave it to each folder.
bool isFolded(const std::filesystem::path& folder)
{
    const FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC));
    int flags = 0;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-vararg): the system's interface
    return opened.isOpen() && ::ioctl(opened.get(), FS_IOC_GETFLAGS, &flags) == 0 &&
           (flags & FS_CASEFOLD_FL) != 0;
}

} // namespace

bool mayIgnoreCase(const std::filesystem::path& folder)
{
    struct statfs system = {};
    if (::statfs(folder.empty() ? "." : folder.c_str(), &system) != 0) {
        const bool isToBeMade = errno == ENOENT && folder.has_relative_path();
        return isToBeMade && mayIgnoreCase(folder.parent_path());
    }
    const auto kind = static_cast<std::uint32_t>(system.f_type);
    return std::ranges::find(kindsThatMayIgnoreCase, kind) != kindsThatMayIgnoreCase.end() ||
           isFolded(folder);
}

std::string caseFolded(std::string_view name)
{
    const auto length = static_cast<gssize>(name.size());
    if (!isUtf8(name)) return Text(::g_ascii_strdown(name.data(), length)).get();
    const Text folded(::g_utf8_casefold(name.data(), length));
    return Text(::g_utf8_normalize(folded.get(), -1, G_NORMALIZE_NFC)).get();
}

} // namespace lumora
