// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The one picture of a stream of HEVC, as the codec gives it, when it is whole. Any thread; new memory has
// its usual fill meanwhile (system/freed_memory.h).
#pragma once

#include <libde265/de265.h>

#include <cstdint>
#include <memory>
#include <span>

namespace lumora {

class HevcDecoding
{
public:
    // `units` are those of the stream, each behind its length in four bytes. Throws Error where anything of
    // it is damaged or memory is lacking.
    explicit HevcDecoding(std::span<const std::uint8_t> units);

    const de265_image* picture() const { return m_run.picture; }

private:
    struct Freed
    {
        void operator()(de265_decoder_context* codec) const { de265_free_decoder(codec); }
    };
    struct Run
    {
        std::unique_ptr<de265_decoder_context, Freed> codec;
        const de265_image* picture = nullptr; // the codec's
    };

    static Run run(std::span<const std::uint8_t> units);
    bool isSameOtherwiseFilled(std::span<const std::uint8_t> units) const;

    Run m_run;
};

} // namespace lumora
