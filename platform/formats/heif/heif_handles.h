// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The HEIF library's objects, each released by its owner.
#pragma once

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
using HeifHandle = std::unique_ptr<heif_image_handle, HeifReleaser<heif_image_handle_release>>;

} // namespace lumora
