// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// Starts everything that reads and writes pictures but the HEVC encoder, with all that is otherwise loaded or
// looked up when such a picture is met: for a process that will not be able to open files. To be called while
// it has one thread. Where the image library's small objects find no memory, which ends the process, the exit
// status is this one.
void prepareCodecs(int outOfMemoryStatus);

// After the others, where HEVC is to be encoded: lets the encoder learn, by a picture of no use, what it asks
// the system only once, how many processors there are and how their memory lies. Takes some ten milliseconds.
// Does nothing without an encoder.
void prepareHevcEncoder();

} // namespace lumora
