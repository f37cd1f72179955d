// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace lumora {

// Asks, above `parent`, whether the program may end though a batch runs. Modal; main thread.
bool confirmQuit(QWidget* parent);

} // namespace lumora
