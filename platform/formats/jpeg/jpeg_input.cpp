// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "jpeg/jpeg_input.h"

#include <jerror.h>

#include <unistd.h>

#include <algorithm>
#include <span>

namespace lumora {
namespace {

constexpr std::array<JOCTET, 2> endOfImage{0xFF, 0xD9};

} // namespace

JpegInput::JpegInput(FileDescriptor file) : m_file(std::move(file))
{
    m_state.descriptor = m_file.get();
    m_state.manager.init_source = [](j_decompress_ptr) {};
    m_state.manager.fill_input_buffer = fill;
    m_state.manager.skip_input_data = skip;
    m_state.manager.resync_to_restart = jpeg_resync_to_restart;
    m_state.manager.term_source = [](j_decompress_ptr) {};
}

JpegInput::State& JpegInput::stateOf(j_decompress_ptr jpeg)
{
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): the manager is the state's first member
    return *reinterpret_cast<State*>(jpeg->src);
}

boolean JpegInput::fill(j_decompress_ptr jpeg)
{
    State& state = stateOf(jpeg);
    const ssize_t count = pread(state.descriptor, state.buffer.data(), state.buffer.size(), state.position);
    if (count < 0) ERREXIT(jpeg, JERR_FILE_READ);
    state.isAtEnd = count == 0;
    state.position += count;
    state.manager.next_input_byte = state.isAtEnd ? endOfImage.data() : state.buffer.data();
    state.manager.bytes_in_buffer = state.isAtEnd ? endOfImage.size() : static_cast<std::size_t>(count);
    return TRUE;
}

void JpegInput::skip(j_decompress_ptr jpeg, long count)
{
    if (count <= 0) return;
    State& state = stateOf(jpeg);
    const auto wanted = static_cast<std::size_t>(count);
    const std::size_t buffered = std::min(wanted, state.manager.bytes_in_buffer);
    state.manager.next_input_byte += buffered;
    state.manager.bytes_in_buffer -= buffered;
    state.position += static_cast<std::int64_t>(wanted - buffered);
}

bool JpegInput::endsInZeros() const
{
    std::array<JOCTET, 2> last{1, 1};
    const std::int64_t first = m_state.position - std::int64_t{last.size()};
    return first >= 0 && pread(m_file.get(), last.data(), last.size(), first) == ssize_t{last.size()} &&
           last[0] == 0 && last[1] == 0;
}

bool JpegInput::isFillingBefore(std::size_t count) const
{
    constexpr std::size_t longestFilling = 64;
    std::array<JOCTET, longestFilling> bytes{};
    const auto left = static_cast<std::int64_t>(m_state.isAtEnd ? 0 : m_state.manager.bytes_in_buffer);
    const std::int64_t first = m_state.position - left - static_cast<std::int64_t>(count);
    if (count > longestFilling || first < 0) return false;
    const std::span<JOCTET> skipped = std::span(bytes).first(count);
    return pread(m_file.get(), skipped.data(), count, first) == static_cast<ssize_t>(count) &&
           std::ranges::all_of(skipped, [](JOCTET byte) { return byte == 0 || byte == 0xFF; });
}

} // namespace lumora
