// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tiff/tiff_deflate.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>

namespace lumora {
namespace {

// Turned bits are turned back by the TIFF library alone.
bool isDeflated(const TiffFile& file)
{
    const std::uint16_t compression = file.number(TIFFTAG_COMPRESSION);
    return (compression == COMPRESSION_DEFLATE || compression == COMPRESSION_ADOBE_DEFLATE) &&
           file.number(TIFFTAG_FILLORDER, FILLORDER_MSB2LSB) == FILLORDER_MSB2LSB;
}

} // namespace

void TiffDeflateCheck::Free::operator()(libdeflate_decompressor* decompressor) const
{
    libdeflate_free_decompressor(decompressor);
}

TiffDeflateCheck::TiffDeflateCheck(const TiffFile& file, std::size_t bytes, bool mayHold)
    : m_isNeeded(isDeflated(file)), m_mayHold(mayHold), m_largest(bytes)
{
    if (m_isNeeded && m_mayHold) m_decompressor.reset(libdeflate_alloc_decompressor());
}

TiffDeflateCheck::~TiffDeflateCheck() = default;
TiffDeflateCheck::TiffDeflateCheck(TiffDeflateCheck&&) noexcept = default;

bool TiffDeflateCheck::isSound(const TiffFile& file, std::uint32_t number)
{
    if (!m_isNeeded) return true;
    const std::uint64_t size = TIFFGetStrileByteCount(file.get(), number);
    constexpr std::size_t sumSize = 4;
    if (size <= sumSize) return false;
    if (!m_mayHold) {
        std::array<std::uint8_t, sumSize> sum{};
        return file.readAt(TIFFGetStrileOffset(file.get(), number) + size - sumSize, sum) &&
               std::ranges::any_of(sum, [](std::uint8_t byte) { return byte != 0; });
    }
    // Data that cannot be made smaller grows by a few bytes.
    if (!m_decompressor || size > 2 * m_largest + 4096) return false;
    m_packed.resize(size);
    m_bytes.resize(m_largest);
    std::size_t got = 0;
    return file.readAt(TIFFGetStrileOffset(file.get(), number), m_packed) &&
           libdeflate_zlib_decompress(m_decompressor.get(), m_packed.data(), m_packed.size(), m_bytes.data(),
                                      m_bytes.size(), &got) == LIBDEFLATE_SUCCESS;
}

} // namespace lumora
