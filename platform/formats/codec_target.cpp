// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "codec_target.h"

#include <vips/vips.h>

#include <new>
#include <utility>

namespace lumora {

CodecTarget::CodecTarget(ByteTaker take) : m_take(std::move(take))
{
    ensureVipsReady();
    VipsTargetCustom* const target = vips_target_custom_new();
    using Write = gint64 (*)(VipsTargetCustom*, const void*, gint64, void*);
    const Write write = [](VipsTargetCustom*, const void* data, gint64 size, void* self) -> gint64 {
        const std::span bytes(static_cast<const std::byte*>(data), static_cast<std::size_t>(size));
        return static_cast<CodecTarget*>(self)->isTaken(bytes) ? size : -1;
    };
    g_signal_connect(target, "write", G_CALLBACK(write), this);
    m_target.reset(VIPS_TARGET(target));
}

bool CodecTarget::isTaken(std::span<const std::byte> bytes) noexcept
try {
    const auto status = m_take(bytes);
    if (!status && !m_error) m_error = status.error();
    return static_cast<bool>(status);
} catch (const std::bad_alloc&) {
    m_isOutOfMemory = true;
    return false;
}

Error CodecTarget::error() const
{
    Error library = takeVipsError();
    if (m_isOutOfMemory) return outOfMemory();
    return m_error.value_or(std::move(library));
}

} // namespace lumora
