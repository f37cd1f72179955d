// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_chunks.h"

#include "encoded_bytes.h"
#include "png/deflation.h"

#include <libdeflate.h>

#include <span>

namespace lumora {
namespace {

// The most thorough search takes seconds on large texts.
constexpr std::size_t smallText = std::size_t{1} << 21U;

std::uint32_t checksum(std::string_view type, std::string_view data)
{
    const std::uint32_t ofType = libdeflate_crc32(0, type.data(), type.size());
    // The library begins anew at a null pointer.
    return data.empty() ? ofType : libdeflate_crc32(ofType, data.data(), data.size());
}

} // namespace

std::string deflated(std::string_view text)
{
    std::string stream;
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): characters as bytes
    static_cast<void>(deflate({{reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}},
                              text.size() <= smallText ? Search::thorough : Search::usual,
                              [&](ByteSpan piece) -> Status {
                                  stream.append(piece.begin(), piece.end());
                                  return Done{};
                              }));
    return stream;
}

std::string bigEndian(std::size_t value)
{
    std::string bytes;
    for (const unsigned shift : {24U, 16U, 8U, 0U})
        bytes += static_cast<char>(value >> shift & 0xFFU);
    return bytes;
}

void appendChunk(Bytes& png, std::string_view type, std::string_view data)
{
    append(png, bigEndian(data.size()));
    append(png, type);
    append(png, data);
    append(png, bigEndian(checksum(type, data)));
}

Status appendChunk(OutputFile& png, std::string_view type, std::string_view data)
{
    constexpr std::size_t longest = (std::size_t{1} << 31U) - 1;
    if (data.size() > longest) return Error{"more data than a chunk can hold"};
    const std::string head = bigEndian(data.size()).append(type);
    const std::string tail = bigEndian(checksum(type, data));
    for (const std::string_view part : {std::string_view(head), data, std::string_view(tail)}) {
        if (auto status = png.append(std::as_bytes(std::span(part))); !status) return status;
    }
    return Done{};
}

} // namespace lumora
