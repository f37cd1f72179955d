// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "format_io.h"

namespace lumora {

bool hasHevcEncoder();

// Lets the encoder learn, by a picture of no use, what it asks the system only once: how many processors there
// are and how their memory lies. Does nothing without an encoder.
void prepareHevcEncoder();

// FormatWriter::encode of HEIC.
Status encodeHeic(const EncodeRequest& request, OutputFile& file);

} // namespace lumora
