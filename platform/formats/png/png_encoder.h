// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "format_io.h"

namespace lumora {

// FormatWriter::encode of PNG.
Status encodePng(const EncodeRequest& request, OutputFile& file);

} // namespace lumora
