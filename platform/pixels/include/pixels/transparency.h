// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "pixels/image.h"

namespace lumora {

// Whether a picture in memory has a pixel that is not opaque; false for one that is not in memory. Any
// thread.
bool hasTransparency(const Image& image);

} // namespace lumora
