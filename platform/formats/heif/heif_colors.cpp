// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "heif/heif_colors.h"

#include "pixels/color_profile.h"
#include "pixels/described_colors.h"

#include <libheif/heif.h>

#include <sys/stat.h>
#include <unistd.h>

#include <memory>
#include <optional>
#include <utility>

namespace lumora {
namespace {

template <auto Release>
struct Releaser
{
    template <class T>
    void operator()(T* object) const
    {
        Release(object);
    }
};
using Context = std::unique_ptr<heif_context, Releaser<heif_context_free>>;
using Handle = std::unique_ptr<heif_image_handle, Releaser<heif_image_handle_release>>;
using Codes = std::unique_ptr<heif_color_profile_nclx, Releaser<heif_nclx_color_profile_free>>;

// An open file as the library reads it; the descriptor's own position stays.
struct Position
{
    int descriptor;
    std::int64_t at = 0;
};

int read(void* data, size_t size, void* position)
{
    auto& file = *static_cast<Position*>(position);
    for (auto* to = static_cast<char*>(data); size > 0;) {
        const ssize_t count = pread(file.descriptor, to, size, file.at);
        if (count <= 0) return 1;
        to += count;
        file.at += count;
        size -= static_cast<std::size_t>(count);
    }
    return 0;
}

heif_reader_grow_status waitForSize(std::int64_t size, void* position)
{
    struct stat status = {};
    const bool isKnown = fstat(static_cast<Position*>(position)->descriptor, &status) == 0;
    return isKnown && size <= status.st_size ? heif_reader_grow_status_size_reached
                                             : heif_reader_grow_status_size_beyond_eof;
}

heif_reader readerOfPositions()
{
    return {1, [](void* position) { return static_cast<Position*>(position)->at; }, read,
            [](std::int64_t at, void* position) {
                static_cast<Position*>(position)->at = at;
                return 0;
            },
            waitForSize};
}

bool worked(const heif_error& error)
{
    return error.code == heif_error_Ok;
}

std::optional<ColorDescription> colorsOf(int descriptor)
{
    const heif_reader reader = readerOfPositions();
    Position position{descriptor};
    const Context context(heif_context_alloc());
    heif_image_handle* primary = nullptr;
    heif_color_profile_nclx* found = nullptr;
    if (!worked(heif_context_read_from_reader(context.get(), &reader, &position, nullptr)) ||
        !worked(heif_context_get_primary_image_handle(context.get(), &primary)))
        return std::nullopt;
    const Handle handle(primary);
    if (!worked(heif_image_handle_get_nclx_color_profile(primary, &found))) return std::nullopt;
    const Codes codes(found);
    return colorsOfCodes(static_cast<unsigned>(codes->color_primaries),
                         static_cast<unsigned>(codes->transfer_characteristics));
}

} // namespace

VipsImagePtr withHeifColors(VipsImagePtr image, int descriptor)
{
    if (!attachedProfile(image.get()).empty()) return image;
    const auto colors = colorsOf(descriptor);
    return colors ? withColors(std::move(image), *colors) : std::move(image);
}

} // namespace lumora
