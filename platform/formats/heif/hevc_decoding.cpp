// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_decoding.h"

#include "heif/hevc_blocks.h"
#include "system/freed_memory.h"
#include "system/result.h"

#include <cstddef>
#include <mutex>
#include <shared_mutex>

namespace lumora {
namespace {

// The fill is the whole process's, and the pieces of a picture are decoded side by side.
std::shared_mutex fillUse;

class OtherFill
{
public:
    OtherFill() : m_lock(fillUse) { fillNewMemory(value); }
    ~OtherFill() { fillNewMemory(newMemoryFill); }
    OtherFill(const OtherFill&) = delete;
    OtherFill& operator=(const OtherFill&) = delete;

private:
    static constexpr std::uint8_t value = 1;

    std::unique_lock<std::shared_mutex> m_lock;
};

// Speak of how the codec works or of what stands beside the picture. All others are damage that it passed
// over.
bool isHarmless(de265_error warning)
{
    return warning == DE265_WARNING_NO_WPP_CANNOT_USE_MULTITHREADING ||
           warning == DE265_WARNING_NUMBER_OF_THREADS_LIMITED_TO_MAXIMUM ||
           warning == DE265_WARNING_SPS_MISSING_CANNOT_DECODE_SEI;
}

void check(de265_error error)
{
    if (error == DE265_ERROR_OUT_OF_MEMORY || error == DE265_WARNING_CANNOT_APPLY_SAO_OUT_OF_MEMORY)
        throw outOfMemory();
    if (error != DE265_OK) throw Error{de265_get_error_text(error)};
}

void push(de265_decoder_context* codec, std::span<const std::uint8_t> units)
{
    constexpr std::size_t lengthBytes = 4;
    while (!units.empty()) {
        if (units.size() < lengthBytes) throw Error{"half a length"};
        const std::size_t length = std::size_t{units[0]} << 24U | std::size_t{units[1]} << 16U |
                                   std::size_t{units[2]} << 8U | units[3];
        units = units.subspan(lengthBytes);
        if (length > units.size()) throw Error{"a unit of the stream that goes on behind its end"};
        check(de265_push_NAL(codec, units.data(), static_cast<int>(length), 0, nullptr));
        units = units.subspan(length);
    }
    check(de265_flush_data(codec));
}

} // namespace

// What nothing was written to looks as new memory does: a block of sixteen pixels a side at least, into which
// filters reach from outside. So may what was written, but it stays the same when memory is filled otherwise.
HevcDecoding::HevcDecoding(std::span<const std::uint8_t> units)
{
    {
        const std::shared_lock lock(fillUse);
        m_run = run(units);
    }
    if (hasBlockOf(newMemoryFill, picture()) && !isSameOtherwiseFilled(units))
        throw Error{"less than the whole picture in the stream"};
}

bool HevcDecoding::isSameOtherwiseFilled(std::span<const std::uint8_t> units) const
{
    const OtherFill fill;
    return areSame(picture(), run(units).picture);
}

HevcDecoding::Run HevcDecoding::run(std::span<const std::uint8_t> units)
{
    Run made;
    made.codec.reset(de265_new_decoder());
    de265_decoder_context* const codec = made.codec.get();
    if (!codec) throw outOfMemory();
    push(codec, units);
    int isMore = 1;
    while (isMore != 0 && !made.picture) {
        isMore = 0;
        check(de265_decode(codec, &isMore));
        made.picture = de265_get_next_picture(codec);
    }
    if (!made.picture) throw Error{"no picture in the stream"};
    for (auto warning = de265_get_warning(codec); warning != DE265_OK; warning = de265_get_warning(codec)) {
        if (!isHarmless(warning)) check(warning);
    }
    return made;
}

} // namespace lumora
