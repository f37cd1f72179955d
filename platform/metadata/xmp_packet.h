// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// An XMP packet brought to agree with the picture that it will travel with. Any thread.
#pragma once

#include "metadata/picture_facts.h"
#include "metadata/split_xmp.h"

#include <cstddef>
#include <limits>

namespace lumora {

// What describes data that is no longer in the file is left out: appended videos, further pictures, depth and
// gain maps, previews, the layout of the old pixels, another colour profile. Dimensions, colour space and
// orientation are brought up to date where they are given. A packet without an extension that needs no change
// keeps its wording; blanks that pad it for editing in place go in any case. Where the outcome is longer than
// `longest` bytes, the largest properties go into an extension. Empty when the packet cannot be parsed, would
// take too long, or nothing remains; an extension of which that is true is left out. Throws Exiv2::Error and
// standard exceptions.
SplitXmp updatedXmp(const SplitXmp& xmp, const PictureFacts& facts,
                    std::size_t longest = std::numeric_limits<std::size_t>::max());

// Whether the packet is sound and nothing of it remains once that is left out. Any thread; never throws
// anything but std::bad_alloc.
bool speaksOfOtherDataOnly(const std::string& packet);

} // namespace lumora
