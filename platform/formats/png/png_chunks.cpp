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

} // namespace

std::string deflated(std::string_view data)
{
    const std::unique_ptr<libdeflate_compressor, CompressorDelete> compressor(
        libdeflate_alloc_compressor(data.size() <= smallData ? optimalLevel : thoroughLevel));
    if (!compressor) throw std::bad_alloc();
    std::string out(libdeflate_zlib_compress_bound(compressor.get(), data.size()), '\0');
    out.resize(libdeflate_zlib_compress(compressor.get(), data.data(), data.size(), out.data(), out.size()));
    return out;
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
    const std::string body = std::string(type) + std::string(data);
    append(png, bigEndian(data.size()));
    append(png, body);
    append(png, bigEndian(libdeflate_crc32(0, body.data(), body.size())));
}

} // namespace lumora
