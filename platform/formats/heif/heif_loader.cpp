// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heif_loader.h"

#include "format_io.h"
#include "heif/heif_handles.h"
#include "heif/heif_input.h"
#include "heif/hevc_decoder.h"
#include "heif/hevc_threads.h"
#include "pixels/interleaving.h"
#include "row_picture.h"
#include "system/freed_memory.h"
#include "types/heif_items.h"
#include "vips_loading.h"

#include <fcntl.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

namespace lumora {
namespace {

using Planes = std::unique_ptr<heif_image, HeifReleaser<heif_image_release>>;

// Nearly every photograph. The image library reads those with alpha or more than eight bits.
bool isOfUsualKind(VipsImage* image)
{
    int bits = 0;
    return vips_image_get_bands(image) == 3 && vips_image_get_format(image) == VIPS_FORMAT_UCHAR &&
           vips_image_get_typeof(image, "heif-bitdepth") &&
           vips_image_get_int(image, "heif-bitdepth", &bits) == 0 && bits == 8;
}

// More than the library allows a picture is no lack of memory but a number that makes no sense.
Error errorOf(const heif_error& error)
{
    const bool isLack = error.code == heif_error_Memory_allocation_error &&
                        error.subcode != heif_suberror_Security_limit_exceeded;
    return isLack ? outOfMemory() : Error{error.message ? error.message : "unreadable HEIF"};
}

// Rows of the planes in which the HEIF library has colours first. To have it put them together, as the image
// library does, costs a seventh more and as much memory again.
class HeifRows : public RowSource
{
public:
    HeifRows(FileDescriptor file, const VipsImage* form)
        : m_file(std::move(file)), m_width(form->Xsize), m_height(form->Ysize)
    {
    }

    Status next(std::uint8_t* row) override
    {
        if (m_next == 0) {
            if (auto status = decode(); !status) return status;
        }
        interleave3(rowOf(heif_channel_R), rowOf(heif_channel_G), rowOf(heif_channel_B), m_width, row);
        if (++m_next == m_height) m_planes.reset();
        return Done{};
    }

private:
    Status decode()
    {
        const HeifItems items = heifItems(m_file.get());
        // The container's word counts more than the stream's, which is all that the decoder knows.
        const bool isUsual = std::ranges::all_of(items.codings, &ColorCoding::isUsual);
        HeifInput input(m_file.get(), {.isInRgb = isUsual, .isAlone = items.isOnePiece()});
        const HeifContext context(heif_context_alloc());
        const HeifHandle picture = input.primaryPicture(context.get());
        if (!picture) return Error{"unreadable HEIF"};
        heif_image* decoded = nullptr;
        const heif_error error =
            heif_decode_image(picture.get(), &decoded, heif_colorspace_RGB, heif_chroma_444, nullptr);
        fillNewMemory(std::nullopt); // what follows writes all that it asks for
        m_planes.reset(decoded);
        if (error.code != heif_error_Ok) return errorOf(error);
        const bool isAsSaid =
            hasPlane(heif_channel_R) && hasPlane(heif_channel_G) && hasPlane(heif_channel_B);
        return isAsSaid ? Status(Done{}) : Error{"a HEIF of another kind than it says"};
    }

    bool hasPlane(heif_channel channel) const
    {
        return heif_image_get_width(m_planes.get(), channel) == m_width &&
               heif_image_get_height(m_planes.get(), channel) == m_height &&
               heif_image_get_bits_per_pixel(m_planes.get(), channel) == 8;
    }

    const std::uint8_t* rowOf(heif_channel channel) const
    {
        int stride = 0;
        const std::uint8_t* const first = heif_image_get_plane_readonly(m_planes.get(), channel, &stride);
        return first + std::ptrdiff_t{m_next} * stride;
    }

    FileDescriptor m_file;
    int m_width;
    int m_height;
    Planes m_planes;
    int m_next = 0;
};

} // namespace

Result<VipsImagePtr> loadHeif(int descriptor)
{
    ensureHeifReady();
    ensureHevcDecoder();
    if (auto status = findHevcThreads(); !status) return status.error();
    auto described = loadStrictly(vips_heifload_source, descriptor);
    if (!described || !isOfUsualKind(described->get())) return described;
    FileDescriptor file(fcntl(descriptor, F_DUPFD_CLOEXEC, 0));
    if (!file.isOpen()) return Error{"no descriptor left"};
    VipsImagePtr form(vips_image_new());
    if (vips_image_pipelinev(form.get(), VIPS_DEMAND_STYLE_THINSTRIP, described->get(), nullptr) != 0)
        return takeVipsError();
    auto rows = std::make_unique<HeifRows>(std::move(file), form.get());
    // The bytes of its fields live no longer than the picture that the image library made.
    g_object_set_data_full(G_OBJECT(form.get()), "lumora-described", described->release(), g_object_unref);
    return rowPicture(std::move(form), std::move(rows));
}

// The picture in the codec's planes and in the library's.
std::int64_t heifDecodingBytes(VipsImage* image)
{
    return wholePicture(image, 3);
}

} // namespace lumora
