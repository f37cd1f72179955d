// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/hevc_decoder.h"

#include "heif/hevc_decoding.h"
#include "heif/hevc_picture.h"
#include "heif/hevc_rgb.h"
#include "system/freed_memory.h"

#include <libheif/heif_plugin.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace lumora {
namespace {

thread_local HevcWish wish;

class HevcDecoder
{
public:
    // Units of the stream, each behind its length.
    void push(std::span<const std::uint8_t> units)
    {
        m_units.insert(m_units.end(), units.begin(), units.end());
    }

    HeifPicture decode() const
    {
        const HevcDecoding decoding(m_units);
        if (wish.isAlone) fillNewMemory(std::nullopt);
        const de265_image* const picture = decoding.picture();
        return wish.isInRgb && hasUsualColors(picture) ? rgbPictureOf(picture) : heifPictureOf(picture);
    }

private:
    std::vector<std::uint8_t> m_units;
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
