// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where the image library writes a file, piece by piece, as it encodes. One thread.
#pragma once

#include "pixels/vips_library.h"
#include "system/result.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>

struct _VipsTarget;

namespace lumora {

using ByteTaker = std::function<Status(std::span<const std::byte>)>;

class CodecTarget
{
public:
    // The taker may throw std::bad_alloc, which becomes an error: the library is C.
    explicit CodecTarget(ByteTaker take);
    CodecTarget(const CodecTarget&) = delete;
    CodecTarget& operator=(const CodecTarget&) = delete;

    _VipsTarget* get() const { return m_target.get(); }
    // Why writing failed: the taker's reason, otherwise the library's.
    Error error() const;

private:
    bool isTaken(std::span<const std::byte> bytes) noexcept;

    ByteTaker m_take;
    std::optional<Error> m_error;
    bool m_isOutOfMemory = false;
    std::unique_ptr<_VipsTarget, VipsUnref> m_target;
};

} // namespace lumora
