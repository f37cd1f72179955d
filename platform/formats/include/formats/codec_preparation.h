// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// Starts everything that reads and writes pictures, with all that is otherwise loaded or looked up when such
// a picture is met: for a process that will not be able to open files. To be called while it has one thread.
// Where the image library's small objects find no memory, which ends the process, the exit status is this
// one.
void prepareAllCodecs(int outOfMemoryStatus);

} // namespace lumora
