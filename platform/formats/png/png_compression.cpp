// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "png/png_compression.h"

#include "png/palette_chain.h"

#include <algorithm>
#include <array>
#include <span>
#include <vector>

namespace lumora {
namespace {

// Up to here time is nothing, and the most thorough search pays.
constexpr std::size_t smallData = std::size_t{1} << 18U;

// Strips from all over the picture, each of which is a few times as long as the compressor looks back.
constexpr std::size_t smallSample = std::size_t{1} << 18U;
constexpr std::size_t largeSample = std::size_t{1} << 21U;
constexpr std::size_t stripBytes = std::size_t{1} << 16U;
// Strategies are told apart by so many compressed bytes. Fewer mislead, but not about what is a tenth larger.
constexpr std::size_t tellingBytes = std::size_t{48} << 10U;

// What compresses better than this is drawn.
constexpr std::size_t ratioOfDrawings = 8;
// What a search has to save, as one part in so many, to be worth the time: it takes some ten times as long as
// codes or runs.
constexpr std::size_t worthTenTimes = 40;

// All of the picture, or strips of it; nothing where single rows are longer.
std::vector<std::uint8_t> sampleOf(const PngLayout& layout, std::size_t bytes)
{
    const auto rows = layout.pixels.rows();
    if (rows.size() <= bytes) return {rows.begin(), rows.end()};
    const std::size_t stripRows = std::max<std::size_t>(1, stripBytes / layout.rowBytes);
    const std::size_t strips = bytes / (stripRows * layout.rowBytes);
    std::vector<std::uint8_t> sample;
    for (std::size_t i = 0; i < strips; ++i) {
        const std::size_t first = strips == 1 ? 0 : i * (layout.height - stripRows) / (strips - 1);
        const auto strip = rows.subspan(first * layout.rowBytes, stripRows * layout.rowBytes);
        sample.insert(sample.end(), strip.begin(), strip.end());
    }
    return sample;
}

struct Outcome
{
    std::size_t size;
    RowFilters filters;
};

class Trials
{
public:
    Trials(const PngLayout& layout, std::size_t bytes)
        : m_rowBytes(layout.rowBytes), m_step(layout.step), m_sample(sampleOf(layout, bytes)),
          m_room(m_sample.size() + m_sample.size() / layout.rowBytes)
    {
    }

    std::span<std::uint8_t> sample() { return m_sample; }

    std::size_t sizeBy(RowFilters filters, Search search)
    {
        filterRows(m_sample, m_rowBytes, m_step, filters, m_room);
        return deflatedSize({m_room, m_rowBytes + 1, m_step}, search);
    }

    // The smallest first.
    std::vector<Outcome> outcomesOf(std::span<const RowFilters> choices)
    {
        std::vector<Outcome> outcomes;
        for (const RowFilters filters : choices)
            outcomes.push_back({sizeBy(filters, Search::trial), filters});
        std::ranges::stable_sort(outcomes, {}, &Outcome::size);
        return outcomes;
    }

private:
    std::size_t m_rowBytes;
    std::size_t m_step;
    std::vector<std::uint8_t> m_sample;
    std::vector<std::uint8_t> m_room;
};

// In photographs nearly all repetitions are accidents: codes for single bytes are often as short.
Search searchForPhotograph(Trials& trials, const Outcome& best)
{
    const std::size_t codes = trials.sizeBy(best.filters, Search::none);
    const std::size_t runs = trials.sizeBy(best.filters, Search::runs);
    const auto isWorthTenTimes = [&](std::size_t size) {
        return size + size / worthTenTimes < std::min(codes, runs);
    };
    // What a trial's search saves the usual one saves the more.
    if (isWorthTenTimes(best.size) || isWorthTenTimes(trials.sizeBy(best.filters, Search::usual)))
        return Search::usual;
    return codes < runs ? Search::none : Search::runs;
}

// On a larger sample where that tells more.
Outcome bestOfDrawing(Trials& trials, const PngLayout& layout, std::vector<Outcome> outcomes)
{
    const std::size_t size = trials.sample().size();
    const std::size_t enough = size * tellingBytes / outcomes.front().size;
    std::erase_if(outcomes, [most = outcomes.front().size * 11 / 10](const Outcome& outcome) {
        return outcome.size > most;
    });
    if (outcomes.size() == 1 || enough <= size || layout.pixels.rows().size() <= size)
        return outcomes.front();
    trials = Trials(layout, std::min(enough, largeSample));
    std::vector<RowFilters> contenders(outcomes.size());
    std::ranges::transform(outcomes, contenders.begin(), &Outcome::filters);
    return trials.outcomesOf(contenders).front();
}

// Another order of the palette if that is better than `sorted`.
RowFilters filtersForPalette(PngLayout& layout, Trials& trials, const Outcome& sorted)
{
    const auto newIndex = chainedOrder(layout);
    renumber(trials.sample(), newIndex);
    constexpr std::array filters{RowFilters::leastSum, RowFilters::leastEntropy};
    const Outcome chained = trials.outcomesOf(filters).front();
    if (chained.size >= sorted.size) return sorted.filters;
    renumber(layout.pixels.rows(), newIndex);
    reorder(layout.palette, newIndex);
    return chained.filters;
}

} // namespace

Compression bestCompression(PngLayout& layout)
{
    constexpr std::array allFilters{RowFilters::none, RowFilters::leastSum, RowFilters::leastEntropy};
    Trials trials(layout, smallSample);
    if (trials.sample().empty()) return {RowFilters::leastEntropy, Search::usual};
    const auto outcomes = trials.outcomesOf(allFilters);
    const bool isPalette = !layout.palette.empty() && layout.bitDepth == 8;
    const bool isSmall = layout.pixels.rows().size() <= smallData;
    const bool isDrawing = isPalette || outcomes.front().size < trials.sample().size() / ratioOfDrawings;
    if (!isSmall && !isDrawing)
        return {outcomes.front().filters, searchForPhotograph(trials, outcomes.front())};
    const Outcome best = bestOfDrawing(trials, layout, outcomes);
    const RowFilters filters = isPalette ? filtersForPalette(layout, trials, best) : best.filters;
    return {filters, isSmall ? Search::thorough : Search::usual};
}

Status compressRows(PngLayout& layout, Compression compression, const StreamTaker& take)
{
    const auto room = layout.pixels.all();
    filterRows(layout.pixels.rows(), layout.rowBytes, layout.step, compression.filters, room);
    return deflate({room, layout.rowBytes + 1, layout.step}, compression.search, take);
}

} // namespace lumora
