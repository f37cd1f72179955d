// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/deflate_pieces.h"

#include "png/block_writer.h"
#include "png/cheapest_path.h"
#include "png/deflate_blocks.h"
#include "system/side_by_side.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <bit>
#include <limits>
#include <vector>

namespace lumora {
namespace {

// The matches of so many bytes are held at a time.
constexpr std::size_t stretchBytes = std::size_t{1} << 18U;
// A block of fewer steps goes on in the next stretch: of flat ground a stretch makes a few hundred, of which
// a tenth would be the description of the codes.
constexpr std::size_t mostHeld = 16384;
// The window before it has to be learned for each, which is a hundredth of this.
constexpr std::size_t leastPiece = std::size_t{4} << 20U;

// The cheapest path depends on the codes and the codes on the path: another round is worth its time while the
// one before saved a twenty-fifth.
constexpr int mostRounds = 4;
constexpr double worthARound = 0.96;

// A power of two, as the number of processors mostly is: none waits for the last piece.
std::size_t pieceCount(std::size_t bytes)
{
    return std::max<std::size_t>(std::bit_floor(bytes / leastPiece), 1);
}

struct Pricing
{
    std::vector<PricedBytes> prices;
    double bits = 0; // of the steps, by these prices
};

Pricing pricingBy(std::span<const Step> steps)
{
    Pricing priced;
    std::size_t step = 0;
    std::size_t byte = 0;
    for (const DeflateBlock& block : blocksOf(steps)) {
        for (; step < block.end; ++step)
            byte += steps[step].length;
        priced.prices.push_back({byte, costsBy(block.counts)});
        priced.bits += block.bits;
    }
    return priced;
}

std::vector<std::uint8_t> deflatedPiece(const PixelRows& rows, std::size_t begin, std::size_t end,
                                        bool isLast)
{
    const auto stretchAt = [&](std::size_t at) {
        return rows.bytes.subspan(at, std::min(stretchBytes, end - at));
    };
    MatchFinder finder(rows, begin);
    MatchLists lists;
    PathSearch path;
    BlockWriter writer;
    std::vector<Step> held;
    std::vector<PricedBytes> prices{{0, costsBefore(stretchAt(begin))}};
    for (std::size_t at = begin; at < end;) {
        const ByteSpan stretch = stretchAt(at);
        finder.find(stretch.size(), lists);
        // The codes of the stretch before are worth a comparison, those before the first are not.
        double before = std::numeric_limits<double>::infinity();
        for (int round = 0; round < mostRounds; ++round) {
            const double expected = path.find(stretch, lists, prices);
            if (round == 0 && at > begin) before = expected;
            Pricing priced = pricingBy(path.steps());
            prices = std::move(priced.prices);
            if (priced.bits > before * worthARound) break;
            before = priced.bits;
        }
        prices.erase(prices.begin(), prices.end() - 1);
        at += stretch.size();
        held.insert(held.end(), path.steps().begin(), path.steps().end());
        std::size_t written = 0;
        for (const DeflateBlock& block : blocksOf(held)) {
            if (block.end == held.size() && at < end && block.end - written < mostHeld) break;
            writer.write(std::span<const Step>(held).subspan(written, block.end - written), block.counts);
            written = block.end;
        }
        held.erase(held.begin(), held.begin() + static_cast<std::ptrdiff_t>(written));
    }
    return writer.end(isLast);
}

std::array<std::uint8_t, 4> checksumOf(ByteSpan data)
{
    const std::uint32_t sum = libdeflate_adler32(1, data.data(), data.size());
    return {static_cast<std::uint8_t>(sum >> 24U), static_cast<std::uint8_t>(sum >> 16U),
            static_cast<std::uint8_t>(sum >> 8U), static_cast<std::uint8_t>(sum)};
}

} // namespace

Status deflateSideBySide(const PixelRows& rows, const StreamTaker& take)
{
    const std::size_t count = pieceCount(rows.bytes.size());
    const std::size_t pieceBytes = rows.bytes.size() / count;
    std::vector<std::vector<std::uint8_t>> pieces(count);
    runSideBySide(count, [&](std::size_t i) {
        const bool isLast = i + 1 == count;
        const std::size_t end = isLast ? rows.bytes.size() : (i + 1) * pieceBytes;
        pieces[i] = deflatedPiece(rows, i * pieceBytes, end, isLast);
    });
    constexpr std::array<std::uint8_t, 2> head{0x78, 0xDA}; // looks back 32 KB, at leisure
    pieces.front().insert(pieces.front().begin(), head.begin(), head.end());
    const auto checksum = checksumOf(rows.bytes);
    pieces.back().insert(pieces.back().end(), checksum.begin(), checksum.end());
    for (const auto& piece : pieces) {
        if (auto status = take(piece); !status) return status;
    }
    return Done{};
}

} // namespace lumora
