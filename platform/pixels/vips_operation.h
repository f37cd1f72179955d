// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixels/vips_library.h"

#include <vips/vips.h>

namespace lumora {

inline VipsImagePtr newReference(VipsImage* image)
{
    g_object_ref(image);
    return VipsImagePtr(image);
}

// What an operation of the image library makes of the picture; its error when it fails.
template <class Operation>
Result<VipsImagePtr> applied(const VipsImagePtr& in, Operation operation)
{
    VipsImage* out = nullptr;
    if (operation(in.get(), &out) != 0) return takeVipsError();
    return VipsImagePtr(out);
}

} // namespace lumora
