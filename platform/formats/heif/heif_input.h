// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The HEIF library's view of an open file, which others read too and whose position is theirs. One thread.
#pragma once

#include "heif/heif_handles.h"
#include "heif/hevc_decoder.h"

#include <cstddef>
#include <cstdint>

namespace lumora {

class HeifInput
{
public:
    // The descriptor stays the caller's.
    explicit HeifInput(int descriptor, HevcWish wish = {});
    ~HeifInput();
    HeifInput(const HeifInput&) = delete;
    HeifInput& operator=(const HeifInput&) = delete;

    // Makes the context read the file, of which it takes more whenever it decodes: neither the descriptor nor
    // this moves or ends before the context. Null when the file is damaged.
    HeifHandle primaryPicture(heif_context* context);

private:
    static HeifInput& of(void* self) { return *static_cast<HeifInput*>(self); }
    int read(void* to, std::size_t size);

    int m_descriptor;
    HevcWish m_wish;
    std::int64_t m_size = 0;
    std::int64_t m_at = 0;
    heif_reader m_calls{};
};

} // namespace lumora
