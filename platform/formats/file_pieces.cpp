// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "file_pieces.h"

#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <span>
#include <utility>

namespace lumora {
namespace {

constexpr std::size_t bufferSize = std::size_t{1} << 18U;

Result<bool> appendPiece(int file, const FilePiece& piece, std::span<std::byte> buffer, OutputFile& output)
{
    std::uint64_t at = piece.at;
    for (std::uint64_t left = piece.size; left > 0;) {
        const auto wanted = static_cast<std::size_t>(std::min<std::uint64_t>(left, buffer.size()));
        const ssize_t got = pread(file, buffer.data(), wanted, static_cast<off_t>(at));
        if (got <= 0) return got == 0 && piece.size == FilePiece::rest;
        const auto count = static_cast<std::size_t>(got);
        if (const auto status = output.append(buffer.first(count)); !status) return status.error();
        at += count;
        left -= count;
    }
    return true;
}

} // namespace

void FilePieces::keep(std::uint64_t at, std::uint64_t size)
{
    const bool isNext = !m_pieces.empty() && m_pieces.back().instead.empty() &&
                        m_pieces.back().at + m_pieces.back().size == at;
    if (isNext && size != FilePiece::rest) {
        m_pieces.back().size += size;
    } else {
        m_pieces.push_back({at, size});
    }
}

void FilePieces::put(std::string bytes)
{
    m_pieces.push_back({.instead = std::move(bytes)});
}

Result<bool> appendPieces(int file, const FilePieces& pieces, OutputFile& output)
{
    const auto memory = std::make_unique_for_overwrite<std::byte[]>(bufferSize);
    const std::span buffer(memory.get(), bufferSize);
    for (const FilePiece& piece : pieces.pieces()) {
        if (!piece.instead.empty()) {
            const auto status = output.append(std::as_bytes(std::span(piece.instead)));
            if (!status) return status.error();
            continue;
        }
        auto isThere = appendPiece(file, piece, buffer, output);
        if (!isThere || !*isThere) return isThere;
    }
    return true;
}

} // namespace lumora
