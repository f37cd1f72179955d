// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// Starts the image library with all that it otherwise loads when such a picture is met, for a process that
// will not be able to open files; before it has a second thread, because the start writes to the environment.
// Ends the program when the library cannot start. Where its small objects find no memory, which ends the
// process, the exit status is this one.
void startWholeImageLibrary(int outOfMemoryStatus);

} // namespace lumora
