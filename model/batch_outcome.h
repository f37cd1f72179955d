// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What became of the files of one batch, and how it is said. A value.
#pragma once

#include "records/processing_result.h"

#include <QString>

#include <string_view>

namespace lumora {

// The user, or his settings, kept an older output: no failure of the file.
bool isSkipped(const ProcessingResult& result);
// Skipped as what needs nothing done, because such files were to be left alone.
bool isLeftAlone(const ProcessingResult& result);
// Neither written nor skipped: worth another try.
bool isFailed(const ProcessingResult& result);
// An undo was here: what it says of a file whose output is gone, or of one that it left as it was.
bool isTakenBack(std::string_view message);
bool isOfUndo(const ProcessingResult& result);

struct BatchOutcome
{
    int succeeded = 0;
    int failed = 0;
    int skipped = 0;
    int leftOut = 0; // by cancelling
    int undone = 0;
    int notUndone = 0;

    void add(const ProcessingResult& result);
    bool isOfUndo() const { return undone + notUndone > 0; }

    // "21 optimized, 3 failed, 2 skipped" or "8 undone, 1 left as it is"; empty where every file was
    // optimized.
    QString text() const;

    bool operator==(const BatchOutcome&) const = default;
};

} // namespace lumora
