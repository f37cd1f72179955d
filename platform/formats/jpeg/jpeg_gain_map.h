// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "metadata/jpeg_segments.h"

#include <vector>

namespace lumora {

// Whether an open JPEG with these segments says that it holds a gain map: in its packet, in a segment of ISO
// 21496-1, or in the further pictures behind the first (CIPA DC-007). The descriptor's position stays where
// it is. Any thread; throws std::bad_alloc.
bool hasGainMap(int descriptor, const std::vector<JpegSegment>& segments);

} // namespace lumora
