// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Small helpers of the encoders. Any thread.
#pragma once

#include "format_io.h"
#include "pixels/vips_library.h"

#include <vips/vips.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
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

struct FreeWithGlib
{
    void operator()(void* memory) const { g_free(memory); }
};

// The components of a picture, row by row, tightly packed.
struct Components
{
    std::unique_ptr<std::uint8_t[], FreeWithGlib> memory;
    std::size_t size = 0;

    std::span<const std::uint8_t> bytes() const { return {memory.get(), size}; }
};

inline Result<Components> componentsOf(VipsImage* image)
{
    std::size_t size = 0;
    void* memory = vips_image_write_to_memory(image, &size);
    if (!memory) return takeVipsError();
    Components components;
    components.memory.reset(static_cast<std::uint8_t*>(memory));
    components.size = size;
    return components;
}

} // namespace lumora
