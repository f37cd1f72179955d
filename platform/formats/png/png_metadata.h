// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The chunks of a PNG that hold metadata. Any thread; throws std::bad_alloc.
#pragma once

#include "format_io.h"

namespace lumora {

// They stand before the picture's data.
void appendPngMetadata(Bytes& png, const Metadata& metadata, const PictureFacts& facts);

} // namespace lumora
