// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// To be called after each file; every fourth call gives what is free on the heap back to the system. Codecs
// free buffers of ever other sizes, whose gaps would make a batch's memory grow with its number of files;
// closing them after every file would cost small ones a tenth of their time. Any thread.
void returnFreedMemory();

} // namespace lumora
