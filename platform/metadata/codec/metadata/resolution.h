// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How large a picture is meant to be on paper. Any thread.
#pragma once

#include "metadata/metadata.h"

namespace lumora {

// From the density of a PNG, else from EXIF, else from a JFIF header; unknown when none of them is plausible.
// Throws std::bad_alloc and nothing else.
Resolution resolutionOf(const Metadata& metadata);

} // namespace lumora
