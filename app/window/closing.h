// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What closing a window means for the program. A pure function.
#pragma once

namespace lumora {

struct ClosingCircumstances
{
    bool isLast = false;             // no other window of the program shows
    bool hasStatusItem = false;      // which opens the window again
    bool canBeLaunchedAgain = false; // another launch finds the running program
    bool isProcessing = false;
    bool quitsByPreference = false;
    bool wasTold = false; // that the program goes on
};

enum class Closing {
    closes,
    tells,      // closes once the user knows that the program goes on
    asksToQuit, // quits where the user agrees, else stays open
    quits,
};

Closing closingOf(const ClosingCircumstances& circumstances);

} // namespace lumora
