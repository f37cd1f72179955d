// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflation.h"

#include <zlib.h>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

namespace lumora {
namespace {

int levelOf(Search search)
{
    switch (search) {
    case Search::trial:
        return 7;
    case Search::deep:
        return 9;
    case Search::usual:
        return 10;
    default:
        return 12;
    }
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

Status deflate(ByteSpan data, Search search, const StreamTaker& take)
{
    if (search == Search::none) return deflateInPieces(data, Z_HUFFMAN_ONLY, take);
    if (search == Search::runs) return deflateInPieces(data, Z_RLE, take);
    return deflateSideBySide(data, levelOf(search), take);
}

std::size_t deflatedSize(ByteSpan data, Search search)
{
    std::size_t size = 0;
    static_cast<void>(deflate(data, search, [&](ByteSpan piece) -> Status {
        size += piece.size();
        return Done{};
    }));
    return size;
}

} // namespace lumora
