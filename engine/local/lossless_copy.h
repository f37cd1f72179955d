// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The input's own bytes as its output, where that shows and says the same as an encoded one would. Any
// thread.
#pragma once

#include "formats/image_source.h"
#include "records/optimizer_settings.h"
#include "system/output_file.h"
#include "system/result.h"

namespace lumora::ImageOptimizer {

// Appends the open file of a picture that stands upright, without what the settings remove, to an empty file.
// False where no such copy will do; what was appended then means nothing.
Result<bool> writeLosslessCopy(const ImageSource& source, int file, const OptimizerSettings& settings,
                               OutputFile& output);

} // namespace lumora::ImageOptimizer
