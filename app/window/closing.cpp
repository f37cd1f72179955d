// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/closing.h"

namespace lumora {

Closing closingOf(const ClosingCircumstances& circumstances)
{
    if (!circumstances.isLast) return Closing::closes;
    const bool canComeBack = circumstances.hasStatusItem || circumstances.canBeLaunchedAgain;
    if (!canComeBack) return circumstances.isProcessing ? Closing::asksToQuit : Closing::quits;
    // A batch goes on without a window, whatever comes then.
    if (circumstances.isProcessing) return Closing::closes;
    if (circumstances.quitsByPreference) return Closing::quits;
    return circumstances.hasStatusItem || circumstances.wasTold ? Closing::closes : Closing::tells;
}

} // namespace lumora
