// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The HEIF library's objects, each released by its owner, and its errors.
#pragma once

#include "system/result.h"

#include <libheif/heif.h>

#include <memory>

namespace lumora {

template <auto Release>
struct HeifReleaser
{
    template <class T>
    void operator()(T* object) const
    {
        Release(object);
    }
};
using HeifContext = std::unique_ptr<heif_context, HeifReleaser<heif_context_free>>;
using HeifCodePoints = std::unique_ptr<heif_color_profile_nclx, HeifReleaser<heif_nclx_color_profile_free>>;
using HeifPicture = std::unique_ptr<heif_image, HeifReleaser<heif_image_release>>;
using HeifHandle = std::unique_ptr<heif_image_handle, HeifReleaser<heif_image_handle_release>>;

// Throws Error unless it is none.
inline void checkHeif(const heif_error& error)
{
    if (error.code == heif_error_Memory_allocation_error) throw outOfMemory();
    if (error.code != heif_error_Ok) throw Error{error.message ? error.message : ""};
}

} // namespace lumora
