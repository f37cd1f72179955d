// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "system/content_digest.h"

#include <glib.h>

#include <array>
#include <cerrno>
#include <memory>
#include <unistd.h>

namespace lumora {
namespace {

struct Free
{
    void operator()(GChecksum* sum) const { g_checksum_free(sum); }
};

} // namespace

std::optional<std::string> contentDigest(int descriptor)
{
    const std::unique_ptr<GChecksum, Free> sum(g_checksum_new(G_CHECKSUM_MD5));
    std::array<guchar, 65536> bytes;
    off_t position = 0;
    while (true) {
        const ssize_t count = ::pread(descriptor, bytes.data(), bytes.size(), position);
        if (count < 0 && errno == EINTR) continue;
        if (count < 0) return std::nullopt;
        if (count == 0) break;
        g_checksum_update(sum.get(), bytes.data(), count);
        position += count;
    }
    std::array<guint8, 16> digest{};
    gsize length = digest.size();
    g_checksum_get_digest(sum.get(), digest.data(), &length);
    return std::string(digest.begin(), digest.end());
}

} // namespace lumora
