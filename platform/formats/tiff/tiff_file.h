// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The first picture of an open TIFF file in the TIFF library, which here prints nothing. One thread at a
// time.
#pragma once

#include "system/file_descriptor.h"
#include "system/result.h"

#include <tiffio.h>

#include <cstdint>
#include <memory>
#include <span>

namespace lumora {

class TiffFile
{
public:
    // Reads through a copy of the descriptor and never moves its position.
    static Result<TiffFile> open(int descriptor);

    TIFF* get() const { return m_tiff.get(); }
    // Whether the library has complained of the picture's data since the file was opened, whatever it then
    // returned: it makes up the rest of a damaged facsimile or JPEG and calls it read.
    bool isDamaged() const { return m_state->isDamaged; }
    // Whether all of these bytes lie in the file.
    bool readAt(std::uint64_t position, std::span<std::uint8_t> bytes) const;
    // The field's value, or what the format says of its absence; `fallback` where it says nothing.
    std::uint16_t number(std::uint32_t tag, std::uint16_t fallback = 0) const;

private:
    struct State
    {
        FileDescriptor file;
        toff_t position = 0;
        bool isDamaged = false;
    };
    struct Close
    {
        void operator()(TIFF* tiff) const { TIFFClose(tiff); }
    };
    struct Procedures;

    explicit TiffFile(std::unique_ptr<State> state) : m_state(std::move(state)) {}

    std::unique_ptr<State> m_state;
    std::unique_ptr<TIFF, Close> m_tiff;
};

} // namespace lumora
