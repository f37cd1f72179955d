// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_pieces.h"

#include "metadata/png_chunk_reader.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace lumora {
namespace {

template <std::size_t count>
bool isAmong(const std::array<std::string_view, count>& types, std::string_view type)
{
    return std::ranges::find(types, type) != types.end();
}

bool isOfAnimation(std::string_view type)
{
    return isAmong<3>({"acTL", "fcTL", "fdAT"}, type);
}

bool saysColors(std::string_view type)
{
    return isAmong<9>({"iCCP", "sRGB", "gAMA", "cHRM", "cICP", "mDCV", "cLLI", "mDCv", "cLLi"}, type);
}

// Nobody can read the picture without what begins with a capital.
bool isOfPicture(std::string_view type)
{
    return (type[0] >= 'A' && type[0] <= 'Z') || type == "tRNS";
}

bool isKept(std::string_view type, const LeftOut& leftOut)
{
    if (saysColors(type)) return !leftOut.profile;
    return isOfPicture(type) || !leftOut.metadata;
}

} // namespace

std::optional<FilePieces> pngPieces(int descriptor, const LeftOut& leftOut)
{
    FilePieces pieces;
    pieces.keep(0, firstPngChunk);
    std::size_t at = firstPngChunk;
    for (auto chunk = pngChunkAt(descriptor, at); chunk; chunk = pngChunkAt(descriptor, at)) {
        if (isOfAnimation(chunk->type)) return std::nullopt;
        if (isKept(chunk->type, leftOut)) pieces.keep(at, chunk->end() - at);
        at = chunk->end();
        if (chunk->type != "IEND") continue;
        if (!leftOut.metadata) pieces.keepFrom(at);
        return pieces;
    }
    return std::nullopt;
}

} // namespace lumora
