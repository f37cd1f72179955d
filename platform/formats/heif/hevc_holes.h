// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

struct de265_image;

namespace lumora {

// Whether the codec wrote nothing to some block of the picture, as where a stream claims to end before it
// does. Seen where new memory was filled (fillNewMemory) and the fill is no colour; it is one where eight
// bits are grey, or colours themselves.
bool hasHoles(const de265_image* decoded);

} // namespace lumora
