// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// Whether an open JPEG says that it holds a gain map: in its packet, in a segment of ISO 21496-1, or in the
// further pictures behind the first (CIPA DC-007). Its position stays where it is. Any thread; throws
// std::bad_alloc.
bool hasJpegGainMap(int descriptor);

} // namespace lumora
