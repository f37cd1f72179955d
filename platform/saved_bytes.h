// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Small helpers of the encoders. For the codec layer only.
#pragma once

#include "platform/encoders.h"
#include "platform/vips_library.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace lumora {

// Takes over a buffer that the image library allocated.
inline Bytes takeBytes(void* buffer, std::size_t size)
{
    const auto* first = static_cast<const std::byte*>(buffer);
    Bytes bytes(first, first + size);
    g_free(buffer);
    return bytes;
}

inline void append(Bytes& bytes, std::string_view text)
{
    const std::size_t size = bytes.size();
    bytes.resize(size + text.size());
    std::ranges::copy(std::as_bytes(std::span(text)), bytes.begin() + static_cast<std::ptrdiff_t>(size));
}

inline std::string_view attachedProfileBytes(VipsImage* image)
{
    const void* data = nullptr;
    std::size_t size = 0;
    if (!vips_image_get_typeof(image, VIPS_META_ICC_NAME) ||
        vips_image_get_blob(image, VIPS_META_ICC_NAME, &data, &size) != 0) {
        return {};
    }
    return {static_cast<const char*>(data), size};
}

} // namespace lumora
