// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a process gives up for good before it looks at what strangers have made.
#pragma once

#include <string>

namespace lumora {

// What the kernel offers; what it does not is done without.
struct Confinement
{
    bool hasCallFilter = false; // seccomp: no files by name, no network, no other processes or programs
    bool hasFileFilter = false; // Landlock: no file system, should the first one fail

    std::string description() const; // "system call filter, Landlock", or "none"
};

// Asks and gives nothing up. Any thread.
Confinement confinementOffered();

// Gives up files by name, the network, other processes and programs, privileges that programs could give
// back, and a memory image after a crash. What is open stays open; memory, threads and time stay. To be
// called by a process of one thread.
Confinement confineProcess();

} // namespace lumora
