// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace lumora {

enum class ClosingAnswer { staysOpen, keepsRunning, quits };

// Says, above the window that is being closed, that the program goes on without it and how it comes back, and
// lets the user end the program instead. Modal; main thread.
ClosingAnswer tellOfClosing(QWidget* window);

} // namespace lumora
