// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A picture as the HEVC encoder takes it: planes of 8 bits of brightness, two colour differences (full range,
// the equations of ITU-T T.871) and alpha. Made here and not by the HEIF library, which lets coloured edges
// gain or lose light where colour is halved, and holds the picture twice meanwhile. Any thread.
#pragma once

#include "heif/heif_handles.h"

struct _VipsImage;

namespace lumora {

// Of one to four bands of 8 bits, grey or sRGB, the second or fourth of them alpha; its colour profile comes
// along. Throws Error.
HeifPicture heicPictureOf(_VipsImage* image, bool hasFullChroma);

} // namespace lumora
