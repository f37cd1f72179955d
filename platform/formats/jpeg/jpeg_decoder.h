// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of a JPEG file, and whether they are what was stored. The image library's loader knows only two
// degrees of strictness: one passes holes in the data, the other refuses pictures that lack nothing but their
// end marker. One thread at a time.
#pragma once

#include "jpeg/jpeg_input.h"
#include "system/file_descriptor.h"
#include "system/result.h"

#include <csetjmp>
#include <cstdint>
#include <string>

namespace lumora {

class JpegDecoder
{
public:
    // At 1/divisor (1, 2, 4, 8) of the picture's size, rounded up. Reads nothing yet.
    JpegDecoder(FileDescriptor file, int divisor);
    ~JpegDecoder();
    JpegDecoder(const JpegDecoder&) = delete;
    JpegDecoder& operator=(const JpegDecoder&) = delete;

    // Reads the header and makes ready for the first row; a progressive picture's whole data. Fails unless
    // the rows are as wide and as many and have as many components as is said.
    Status start(int width, int height, int components);
    // The next row: one grey component, three of RGB or four inks (255 for full ink). Fails where data is
    // missing, was passed over or made up; for the last row that is said of the whole picture.
    Status read(std::uint8_t* row);

private:
    // Begins with what the library knows of it.
    struct Messages
    {
        jpeg_error_mgr manager{};
        std::jmp_buf failure{};
        JpegDecoder* decoder = nullptr;
    };
    static JpegDecoder& decoderOf(j_common_ptr jpeg);
    static void fail(j_common_ptr jpeg);
    static void hear(j_common_ptr jpeg, int level);

    template <class Work>
    bool succeeds(Work work);
    bool isHarmless(int warning) const;
    bool isComplete() const;
    bool isWhole();
    Status outcome(bool isGood) const;

    JpegInput m_input;
    Messages m_messages;
    jpeg_decompress_struct m_jpeg{};
    int m_divisor;
    bool m_storesInverse = false;
    bool m_isDamaged = false;
};

} // namespace lumora
