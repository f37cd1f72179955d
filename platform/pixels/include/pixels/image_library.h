// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// Starts the image library, in about two milliseconds. A program that will work on pictures calls this before
// it has a second thread: the start writes to the environment, which other threads may be reading. Without
// the call the first picture starts the library. Later calls do nothing. Ends the program when the library
// cannot start.
void startImageLibrary();

// Starts it with all that it otherwise loads when such a picture is met, for a process that will not be able to
// open files. Where its small objects find no memory, which ends the process, the exit status is this one.
void startWholeImageLibrary(int outOfMemoryStatus);

} // namespace lumora
