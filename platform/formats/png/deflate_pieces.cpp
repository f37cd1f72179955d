// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflate_pieces.h"

#include "system/side_by_side.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <bit>
#include <memory>
#include <new>
#include <optional>
#include <vector>

namespace lumora {
namespace {

// A piece knows nothing of what came before it. This long and this few, that costs a thousandth.
constexpr std::size_t leastPiece = std::size_t{4} << 20U;
constexpr std::size_t mostPieces = 16;

// A power of two, as the number of processors mostly is: none waits for the last piece.
std::size_t pieceCount(std::size_t bytes)
{
    return std::clamp<std::size_t>(std::bit_floor(bytes / leastPiece), 1, mostPieces);
}

struct CompressorDelete
{
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

struct InflationEnd
{
    void operator()(z_stream* stream) const { inflateEnd(stream); }
};

class Piece
{
public:
    // Begins with these bytes.
    Piece(ByteSpan data, int level, ByteSpan head) : m_headBytes(head.size())
    {
        const std::unique_ptr<libdeflate_compressor, CompressorDelete> compressor(
            libdeflate_alloc_compressor(level));
        if (!compressor) throw std::bad_alloc();
        const std::size_t most = libdeflate_deflate_compress_bound(compressor.get(), data.size());
        constexpr std::size_t mostAdded = 5;
        // Touched where it is filled.
        m_bytes = std::make_unique_for_overwrite<std::uint8_t[]>(head.size() + most + mostAdded);
        append(head);
        m_size += libdeflate_deflate_compress(compressor.get(), data.data(), data.size(),
                                              m_bytes.get() + m_size, most);
    }

    // So that another piece may follow: its last block does not say that it is the last any more, and an
    // empty stored block fills the last byte up, for pieces begin with whole ones.
    void open()
    {
        const LastBlock last = lastBlock();
        m_bytes[last.begin / 8] &= static_cast<std::uint8_t>(~(1U << last.begin % 8));
        // Bits, all of them 0, as those are that the last byte has free; then a length of 0, which comes
        // twice.
        constexpr std::size_t blockHead = 3;
        constexpr std::array<std::uint8_t, 4> noBytes{0, 0, 0xFF, 0xFF};
        if (m_size * 8 - last.end < blockHead) append(ByteSpan(noBytes).first(1));
        append(noBytes);
    }

    // Up to 4 bytes, once and in place of opening it.
    void close(ByteSpan tail) { append(tail); }

    ByteSpan bytes() const { return {m_bytes.get(), m_size}; }

private:
    struct LastBlock // in bits from the start
    {
        std::size_t begin;
        std::size_t end;
    };

    // Where blocks begin shows only to whoever inflates them, which takes a hundredth of the time of
    // deflation.
    LastBlock lastBlock() const
    {
        z_stream stream{};
        if (inflateInit2(&stream, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
        const std::unique_ptr<z_stream, InflationEnd> end(&stream);
        std::vector<std::uint8_t> room(std::size_t{1} << 16U);
        stream.next_in = m_bytes.get() + m_headBytes;
        stream.avail_in = static_cast<uInt>(m_size - m_headBytes);
        constexpr int isBetweenBlocks = 128;
        constexpr int wasLast = 64;
        constexpr int freeBits = 7;
        std::size_t begin = m_headBytes * 8;
        for (;;) {
            stream.next_out = room.data();
            stream.avail_out = static_cast<uInt>(room.size());
            const int outcome = inflate(&stream, Z_BLOCK);
            if (outcome != Z_OK && outcome != Z_BUF_ERROR) throw std::bad_alloc(); // its window
            if (!(stream.data_type & isBetweenBlocks)) continue;
            const auto free = static_cast<std::size_t>(stream.data_type & freeBits);
            const std::size_t at = (m_size - stream.avail_in) * 8 - free;
            if (stream.data_type & wasLast) return {begin, at};
            begin = at;
        }
    }

    void append(ByteSpan bytes)
    {
        std::ranges::copy(bytes, m_bytes.get() + m_size);
        m_size += bytes.size();
    }

    std::size_t m_headBytes;
    std::unique_ptr<std::uint8_t[]> m_bytes;
    std::size_t m_size = 0;
};

std::array<std::uint8_t, 4> checksumOf(ByteSpan data)
{
    const std::uint32_t sum = libdeflate_adler32(1, data.data(), data.size());
    return {static_cast<std::uint8_t>(sum >> 24U), static_cast<std::uint8_t>(sum >> 16U),
            static_cast<std::uint8_t>(sum >> 8U), static_cast<std::uint8_t>(sum)};
}

} // namespace

Status deflateSideBySide(ByteSpan data, int level, const StreamTaker& take)
{
    constexpr std::array<std::uint8_t, 2> head{0x78, 0xDA}; // looks back 32 KB, at leisure
    const std::size_t count = pieceCount(data.size());
    std::vector<std::optional<Piece>> pieces(count);
    runSideBySide(count, [&](std::size_t i) {
        const std::size_t begin = data.size() / count * i;
        const bool isLast = i + 1 == count;
        const ByteSpan part = data.subspan(begin, isLast ? std::dynamic_extent : data.size() / count);
        pieces[i].emplace(part, level, i == 0 ? ByteSpan(head) : ByteSpan());
        if (!isLast) pieces[i]->open();
    });
    pieces.back()->close(checksumOf(data));
    for (const auto& piece : pieces) {
        if (auto status = take(piece->bytes()); !status) return status;
    }
    return Done{};
}

} // namespace lumora
