// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The entry of the windowed program. One call a process.
#pragma once

namespace lumora::LumoraMain {

// Runs until the user quits, or hands its files to the program that runs already. The exit status: 0, 1
// without a display, 2 for arguments that make no sense.
int main(int argc, char** argv);

} // namespace lumora::LumoraMain
