// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "metadata/png_chunk_reader.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace lumora {

std::size_t PngChunk::typeAt() const
{
    return dataAt - type.size();
}

std::size_t PngChunk::end() const
{
    constexpr std::size_t checksum = 4;
    return dataAt + length + checksum;
}

std::optional<PngChunk> pngChunkAt(int descriptor, std::size_t at)
{
    std::array<char, 8> head{};
    if (pread(descriptor, head.data(), head.size(), static_cast<off_t>(at)) != ssize_t{head.size()})
        return std::nullopt;
    std::size_t length = 0;
    for (std::size_t i = 0; i < 4; ++i)
        length = length << 8U | static_cast<unsigned char>(head.at(i));
    return PngChunk{std::string(head.data() + 4, 4), at + head.size(), length};
}

bool hasSoundPngHead(int descriptor)
{
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) return false;
    std::size_t at = firstPngChunk;
    for (auto chunk = pngChunkAt(descriptor, at); chunk; chunk = pngChunkAt(descriptor, at)) {
        if (chunk->end() > static_cast<std::size_t>(status.st_size)) return false;
        if (chunk->type == "IDAT") return true;
        at = chunk->end();
    }
    return false;
}

} // namespace lumora
