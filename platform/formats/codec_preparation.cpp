// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "formats/codec_preparation.h"

#include "format_io.h"
#include "pixels/image_library.h"

namespace lumora {

void prepareCodecs(int outOfMemoryStatus)
{
    startWholeImageLibrary(outOfMemoryStatus);
    allowOperations();
}

} // namespace lumora
