// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_decoder.h"

#include "heif/hevc_holes.h"
#include "heif/hevc_picture.h"
#include "heif/hevc_rgb.h"
#include "system/freed_memory.h"

#include <libde265/de265.h>
#include <libheif/heif_plugin.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace lumora {
namespace {

thread_local HevcWish wish;

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

class HevcDecoder
{
public:
    HevcDecoder() : m_codec(de265_new_decoder())
    {
        if (!m_codec) throw outOfMemory();
    }

    // Units of the stream, each behind its length.
    void push(std::span<const std::uint8_t> units)
    {
        constexpr std::size_t lengthBytes = 4;
        while (!units.empty()) {
            if (units.size() < lengthBytes) throw Error{"half a length"};
            const std::size_t length = std::size_t{units[0]} << 24U | std::size_t{units[1]} << 16U |
                                       std::size_t{units[2]} << 8U | units[3];
            units = units.subspan(lengthBytes);
            if (length > units.size()) throw Error{"a unit of the stream that goes on behind its end"};
            check(de265_push_NAL(m_codec.get(), units.data(), static_cast<int>(length), 0, nullptr));
            units = units.subspan(length);
        }
    }

    HeifPicture decode()
    {
        check(de265_flush_data(m_codec.get()));
        const de265_image* picture = nullptr;
        int isMore = 1;
        while (isMore != 0 && !picture) {
            isMore = 0;
            check(de265_decode(m_codec.get(), &isMore));
            picture = de265_get_next_picture(m_codec.get());
        }
        if (!picture) throw Error{"no picture in the stream"};
        for (auto warning = nextWarning(); warning != DE265_OK; warning = nextWarning()) {
            if (!isHarmless(warning)) check(warning);
        }
        if (hasHoles(picture)) throw Error{"less than the whole picture in the stream"};
        if (wish.isAlone) fillNewMemory(false);
        return wish.isInRgb && hasUsualColors(picture) ? rgbPictureOf(picture) : heifPictureOf(picture);
    }

private:
    struct Freed
    {
        void operator()(de265_decoder_context* codec) const { de265_free_decoder(codec); }
    };

    de265_error nextWarning() { return de265_get_warning(m_codec.get()); }

    std::unique_ptr<de265_decoder_context, Freed> m_codec;
};

HevcDecoder& decoderOf(void* decoder)
{
    return *static_cast<HevcDecoder*>(decoder);
}

// What the HEIF library is told when the work throws.
template <class Work>
heif_error errorOf(const Work& work)
try {
    work();
    return {heif_error_Ok, heif_suberror_Unspecified, "Success"};
} catch (const Error& error) {
    if (error.cause == Error::Cause::memory)
        return {heif_error_Memory_allocation_error, heif_suberror_Unspecified, "out of memory"};
    return {heif_error_Decoder_plugin_error, heif_suberror_Unspecified, "damaged HEVC"};
} catch (const std::bad_alloc&) {
    return {heif_error_Memory_allocation_error, heif_suberror_Unspecified, "out of memory"};
}

int priorityFor(heif_compression_format format)
{
    constexpr int aboveTheLibrarysOwn = 200;
    return format == heif_compression_HEVC ? aboveTheLibrarysOwn : 0;
}

constexpr heif_decoder_plugin plugin{
    .plugin_api_version = 3,
    .get_plugin_name = [] { return "HEVC that is whole"; },
    .init_plugin = nullptr,
    .deinit_plugin = nullptr,
    .does_support_format = priorityFor,
    .new_decoder =
        [](void** made) { return errorOf([&] { *made = std::make_unique<HevcDecoder>().release(); }); },
    .free_decoder = [](void* decoder) { const std::unique_ptr<HevcDecoder> freed(&decoderOf(decoder)); },
    .push_data =
        [](void* decoder, const void* data, std::size_t size) {
            return errorOf([&] { decoderOf(decoder).push({static_cast<const std::uint8_t*>(data), size}); });
        },
    .decode_image =
        [](void* decoder, heif_image** picture) {
            return errorOf([&] { *picture = decoderOf(decoder).decode().release(); });
        },
    .set_strict_decoding = [](void*, int) {},
    .id_name = "whole-hevc"};

} // namespace

void ensureHevcDecoder()
{
    static const bool isRegistered = heif_register_decoder_plugin(&plugin).code == heif_error_Ok;
    static_cast<void>(isRegistered);
}

void wishForHevc(HevcWish next)
{
    wish = next;
}

} // namespace lumora
