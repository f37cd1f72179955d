// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What became of the files of one batch, and how it is said. A value.
#pragma once

#include "records/processing_result.h"

#include <QString>

namespace lumora {

// The user, or his settings, kept an older output: no failure of the file.
bool isSkipped(const ProcessingResult& result);
// Skipped as what needs nothing done, because such files were to be left alone.
bool isLeftAlone(const ProcessingResult& result);
// Neither written nor skipped: worth another try.
bool isFailed(const ProcessingResult& result);

struct BatchOutcome
{
    int succeeded = 0;
    int failed = 0;
    int skipped = 0;
    int leftOut = 0; // by cancelling

    void add(const ProcessingResult& result);

    // "21 optimized, 3 failed, 2 skipped"; empty where every file succeeded.
    QString text() const;

    bool operator==(const BatchOutcome&) const = default;
};

} // namespace lumora
