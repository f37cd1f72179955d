// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflation.h"

#include <libdeflate.h>
#include <zlib.h>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

namespace lumora {
namespace {

struct CompressorDelete
{
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

Status deflateWhole(ByteSpan data, int level, const StreamTaker& take)
{
    const std::unique_ptr<libdeflate_compressor, CompressorDelete> compressor(
        libdeflate_alloc_compressor(level));
    if (!compressor) throw std::bad_alloc();
    const std::size_t most = libdeflate_zlib_compress_bound(compressor.get(), data.size());
    const auto room = std::make_unique_for_overwrite<std::uint8_t[]>(most); // touched where it is filled
    const std::size_t size =
        libdeflate_zlib_compress(compressor.get(), data.data(), data.size(), room.get(), most);
    return take({room.get(), size});
}

struct StreamEnd
{
    void operator()(z_stream* stream) const { deflateEnd(stream); }
};

Status deflateInPieces(ByteSpan data, int strategy, const StreamTaker& take)
{
    constexpr int anyLevel = 6;   // the strategy decides
    constexpr int mostMemory = 9; // the longest blocks
    constexpr std::size_t pieceBytes = std::size_t{1} << 18U;
    z_stream stream{};
    if (deflateInit2(&stream, anyLevel, Z_DEFLATED, MAX_WBITS, mostMemory, strategy) != Z_OK)
        throw std::bad_alloc();
    const std::unique_ptr<z_stream, StreamEnd> end(&stream);
    std::vector<std::uint8_t> piece(pieceBytes);
    for (int outcome = Z_OK; outcome != Z_STREAM_END;) {
        const std::size_t fed = std::min(data.size(), pieceBytes);
        stream.next_in = const_cast<std::uint8_t*>(data.data()); // never written to
        stream.avail_in = static_cast<uInt>(fed);
        stream.next_out = piece.data();
        stream.avail_out = static_cast<uInt>(pieceBytes);
        outcome = ::deflate(&stream, fed == data.size() ? Z_FINISH : Z_NO_FLUSH);
        data = data.subspan(fed - stream.avail_in);
        const std::size_t filled = pieceBytes - stream.avail_out;
        if (filled == 0) continue;
        if (auto status = take(ByteSpan(piece).first(filled)); !status) return status;
    }
    return Done{};
}

} // namespace

Status deflate(const PixelRows& rows, Search search, const StreamTaker& take)
{
    constexpr int quick = 7;
    constexpr int slowest = 12;
    switch (search) {
    case Search::none:
        return deflateInPieces(rows.bytes, Z_HUFFMAN_ONLY, take);
    case Search::runs:
        return deflateInPieces(rows.bytes, Z_RLE, take);
    case Search::trial:
        return deflateWhole(rows.bytes, quick, take);
    case Search::usual:
        return deflateSideBySide(rows, take);
    default:
        return deflateWhole(rows.bytes, slowest, take);
    }
}

std::size_t deflatedSize(const PixelRows& rows, Search search)
{
    std::size_t size = 0;
    static_cast<void>(deflate(rows, search, [&](ByteSpan piece) -> Status {
        size += piece.size();
        return Done{};
    }));
    return size;
}

} // namespace lumora
