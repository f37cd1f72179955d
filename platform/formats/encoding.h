// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "format_io.h"
#include "pixels/image.h"

namespace lumora {

// Writes a whole file with the picture, its attached colour profile and what the format holds of the
// metadata. The rows of a picture that is not in memory are taken as they come. `quality` is 1 to 100 and
// counts where the format is lossy. What the format cannot hold (depth, model, alpha, profile) is converted;
// an edge that it cannot hold is an error, and so is a format that no codec writes. Any thread.
Status encodeImage(const Format& format, const Image& image, int quality, const Metadata& metadata,
                   OutputFile& file);

} // namespace lumora
