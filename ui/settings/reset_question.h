// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace lumora {

// Asks, above `parent`, whether the lifetime statistics may go. Modal; main thread.
bool confirmStatsReset(QWidget* parent);

} // namespace lumora
