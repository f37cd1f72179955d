// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "metadata/metadata.h"

struct _VipsImage;

namespace lumora {

// What the header of a PNG or the JFIF header of a JPEG says, in dots an inch. Any thread.
Resolution densityOf(_VipsImage* image);

} // namespace lumora
