// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the components of a picture mean, by its profile or without one. Any thread.
#pragma once

#include "pixels/image.h"

namespace lumora {

// Whether they are those of sRGB already: by what the profile does to colours, since sRGB has many wordings.
bool isSrgb(_VipsImage* image);
bool isSrgb(const Image& image);

// Whether the same profile is attached to both, or none to either.
bool haveSameProfile(const Image& a, const Image& b);

} // namespace lumora
