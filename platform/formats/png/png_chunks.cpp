// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_chunks.h"

#include "encoded_bytes.h"

#include <libdeflate.h>

#include <memory>
#include <new>

namespace lumora {
namespace {

// The optimal parser pays on small data and takes seconds on large.
constexpr std::size_t smallData = std::size_t{1} << 21U;
constexpr int optimalLevel = 12;
constexpr int thoroughLevel = 9;

struct CompressorDelete
{
    void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};

std::uint32_t checksum(std::string_view type, std::string_view data)
{
    const std::uint32_t ofType = libdeflate_crc32(0, type.data(), type.size());
    // The library begins anew at a null pointer.
    return data.empty() ? ofType : libdeflate_crc32(ofType, data.data(), data.size());
}

} // namespace

DeflatedData deflate(std::string_view data)
{
    const std::unique_ptr<libdeflate_compressor, CompressorDelete> compressor(
        libdeflate_alloc_compressor(data.size() <= smallData ? optimalLevel : thoroughLevel));
    if (!compressor) throw std::bad_alloc();
    const std::size_t most = libdeflate_zlib_compress_bound(compressor.get(), data.size());
    DeflatedData result{std::make_unique_for_overwrite<char[]>(most), 0};
    result.size =
        libdeflate_zlib_compress(compressor.get(), data.data(), data.size(), result.memory.get(), most);
    return result;
}

std::string deflated(std::string_view data)
{
    return std::string(deflate(data).bytes());
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
