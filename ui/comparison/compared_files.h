// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where the two files of a result are by now. May take long where a volume sleeps; any thread.
#pragma once

#include "records/processing_result.h"
#include "ui/comparison/picture_reader.h"

namespace lumora {

// In its place, or in the Trash.
PictureFile findOriginal(const ProcessingResult& result);
PictureFile findOutput(const ProcessingResult& result);

} // namespace lumora
