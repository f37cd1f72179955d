// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a deflated strip or tile is what was written. The TIFF library stops when it has enough bytes,
// before the check sum that follows them. One thread at a time.
#pragma once

#include "tiff/tiff_file.h"

#include <cstdint>
#include <memory>
#include <vector>

struct libdeflate_decompressor;

namespace lumora {

class TiffDeflateCheck
{
public:
    // Strips and tiles hold up to `bytes` bytes. Of larger ones than those that may be held at once only the
    // presence of the sum is looked at, for which `mayHold` is false.
    TiffDeflateCheck(const TiffFile& file, std::size_t bytes, bool mayHold);
    ~TiffDeflateCheck();
    TiffDeflateCheck(TiffDeflateCheck&&) noexcept;
    TiffDeflateCheck& operator=(TiffDeflateCheck&&) = delete;

    // Of the strip or tile of this number; true for other compressions. Throws std::bad_alloc.
    bool isSound(const TiffFile& file, std::uint32_t number);

private:
    struct Free
    {
        void operator()(libdeflate_decompressor* decompressor) const;
    };

    bool m_isNeeded;
    bool m_mayHold;
    std::size_t m_largest;
    std::unique_ptr<libdeflate_decompressor, Free> m_decompressor;
    std::vector<std::uint8_t> m_packed;
    std::vector<std::uint8_t> m_bytes;
};

} // namespace lumora
