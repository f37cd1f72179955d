// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// The HEVC encoder's number for a quality of 1 to 100 of ours, at which a photograph looks as a JPEG of that
// quality does. Rises with the quality; 100 stays the best that the encoder does. Any thread.
int encoderQualityOf(int quality);

} // namespace lumora
