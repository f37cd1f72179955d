// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/lumora_main.h"

int main(int argc, char** argv)
{
    return lumora::LumoraMain::main(argc, argv);
}
