// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/program.h"

int main(int argc, char* argv[])
{
    return lumora::cli::runProgram({argv + 1, argv + argc});
}
