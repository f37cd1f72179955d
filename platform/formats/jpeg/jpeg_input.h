// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// An open file as the JPEG library reads it. Where the file ends, the library is given the marker that should
// have stood there: whether a picture is whole is judged by what it then says of the data.
#pragma once

#include "system/file_descriptor.h"

#include <cstddef>
#include <cstdio>

#include <jpeglib.h>

#include <array>
#include <cstdint>

namespace lumora {

// Its address must not change while the library uses it.
class JpegInput
{
public:
    explicit JpegInput(FileDescriptor file);
    JpegInput(const JpegInput&) = delete;
    JpegInput& operator=(const JpegInput&) = delete;

    jpeg_source_mgr* manager() { return &m_state.manager; }
    // Whether the library has asked for more than there is.
    bool isAtEnd() const { return m_state.isAtEnd; }
    // Whether the file does, to be asked at its end. Data ends in ones, which fill its last byte.
    bool endsInZeros() const;
    // Whether the `count` bytes before the one that the library reads next are what writers fill up with.
    bool isFillingBefore(std::size_t count) const;

private:
    // Begins with what the library knows of it.
    struct State
    {
        jpeg_source_mgr manager{};
        int descriptor = -1;
        std::int64_t position = 0; // of the end of the buffer in the file
        bool isAtEnd = false;
        std::array<JOCTET, 65536> buffer{};
    };
    static State& stateOf(j_decompress_ptr jpeg);
    static boolean fill(j_decompress_ptr jpeg);
    static void skip(j_decompress_ptr jpeg, long count);

    FileDescriptor m_file;
    State m_state;
};

} // namespace lumora
