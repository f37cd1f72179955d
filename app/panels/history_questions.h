// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked and told before the history is used. Modal; main thread. `parent` may be null.
#pragma once

#include "history/history_records.h"

class QWidget;

namespace lumora {

// Whether this batch, the last one, is to be taken back.
bool confirmUndo(const BatchSummary& batch, QWidget* parent);
void tellNothingToUndo(QWidget* parent);

// Whether all that is remembered may go.
bool confirmForgetting(QWidget* parent);

// It could be neither read nor changed.
void tellHistoryUnusable(QWidget* parent);

} // namespace lumora
