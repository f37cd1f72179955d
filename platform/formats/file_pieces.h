// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A file as pieces of another. Any thread; throws std::bad_alloc.
#pragma once

#include "system/output_file.h"
#include "system/result.h"

#include <cstdint>
#include <limits>
#include <string>
#include <vector>

namespace lumora {

struct FilePiece
{
    std::uint64_t at = 0; // in the other file
    std::uint64_t size = 0;
    std::string instead = {}; // of anything in the other file, if not empty

    // As a size: however much follows, if anything.
    static constexpr std::uint64_t rest = std::numeric_limits<std::uint64_t>::max();
};

class FilePieces
{
public:
    void keep(std::uint64_t at, std::uint64_t size);
    void keepFrom(std::uint64_t at) { keep(at, FilePiece::rest); }
    void put(std::string bytes);

    const std::vector<FilePiece>& pieces() const { return m_pieces; }

private:
    std::vector<FilePiece> m_pieces;
};

// Appends the pieces. False when the other file, whose position stays where it is, ends before.
Result<bool> appendPieces(int file, const FilePieces& pieces, OutputFile& output);

} // namespace lumora
