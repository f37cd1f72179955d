// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked and told before the history is used. Modal; main thread. `parent` may be null.
#pragma once

#include "history/history_records.h"

#include <cstddef>

class QWidget;

namespace lumora {

enum class WhichBatch { last, chosen };

// Whether this batch is to be taken back.
bool confirmUndo(const BatchSummary& batch, WhichBatch which, QWidget* parent);
// Whether so many files are.
bool confirmUndo(std::size_t files, QWidget* parent);
void tellNothingToUndo(QWidget* parent);

// Whether all that is remembered may go.
bool confirmForgetting(QWidget* parent);

// It could be neither read nor changed.
void tellHistoryUnusable(QWidget* parent);

} // namespace lumora
