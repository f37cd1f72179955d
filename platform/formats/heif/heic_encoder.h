// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "format_io.h"

namespace lumora {

bool hasHevcEncoder();

// FormatWriter::encode of HEIC.
Status encodeHeic(const EncodeRequest& request, OutputFile& file);

} // namespace lumora
