// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What becomes the output of a file: what was encoded or, where only smaller outputs are wanted, something
// better. One thread.
#pragma once

#include "engine/opened_picture.h"
#include "engine/output_plan.h"
#include "system/atomic_file.h"

namespace lumora::ImageOptimizer {

struct FinishedOutput
{
    AtomicFile file;
    bool isCopy = false; // of the original, without what the settings remove
};

// A copy in a chosen folder, so that it holds every picture, where what was encoded is smaller neither than
// the copy nor than the original; otherwise what was encoded. Throws LeftAlone::notSmaller where that is not
// smaller and need not differ in format, size or direction.
FinishedOutput finishedOutput(const Job& job, const OutputPlan& output, OpenedPicture& picture,
                              AtomicFile encoded, std::int64_t originalBytes);

} // namespace lumora::ImageOptimizer
