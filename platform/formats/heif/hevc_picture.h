// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A decoded picture as the HEIF library's.
#pragma once

#include "heif/heif_handles.h"

struct de265_image;

namespace lumora {

// Its components as they are, with what the stream says of their colours. Throws Error.
HeifPicture heifPictureOf(const de265_image* decoded);

} // namespace lumora
