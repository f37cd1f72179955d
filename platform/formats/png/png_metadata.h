// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The chunks of a PNG that hold metadata. For the codec layer only; any thread.
#pragma once

#include "encoders.h"

namespace lumora {

// They stand before the picture's data.
void appendPngMetadata(Bytes& png, const MetadataBlobs& metadata);

} // namespace lumora
