// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/batch_outcome.h"

#include "records/errors.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

ProcessingResult failure(const ImageOptimizerError& error)
{
    return {"/a.png", std::nullopt, 0, 0, error.errorDescription(), false};
}

TEST(BatchOutcome, TellsSuccessesFailuresAndSkipsApart)
{
    BatchOutcome outcome;
    outcome.add({"/a.png", "/a.webp", 2, 1, "Optimized", true});
    outcome.add({"/b.png", "/b.webp", 2, 1, "Optimized", true});
    outcome.add(failure(ImageOptimizerError::unreadableImage()));
    outcome.add(failure(ImageOptimizerError::overwriteDeclined()));
    EXPECT_EQ(outcome, (BatchOutcome{2, 1, 1, 0}));
}

TEST(BatchOutcome, IsSaidOnlyWhereThereIsMoreThanSuccess)
{
    EXPECT_EQ((BatchOutcome{7, 0, 0, 0}).text(), QString());
    EXPECT_EQ((BatchOutcome{21, 3, 2, 0}).text(), QStringLiteral("21 optimized, 3 failed, 2 skipped"));
    EXPECT_EQ((BatchOutcome{0, 1, 0, 4}).text(), QStringLiteral("1 failed, 4 left out"));
}

} // namespace
} // namespace lumora
