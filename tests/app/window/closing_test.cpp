// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/closing.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

ClosingCircumstances onABusWithoutATray()
{
    return {.isLast = true, .canBeLaunchedAgain = true};
}

TEST(ClosingTest, TheFirstOneWithoutATrayTellsThatTheProgramGoesOn)
{
    ClosingCircumstances now = onABusWithoutATray();
    EXPECT_EQ(closingOf(now), Closing::tells);
    now.wasTold = true;
    EXPECT_EQ(closingOf(now), Closing::closes);
}

TEST(ClosingTest, NothingIsSaidWithATrayInABatchOrBesideAnotherWindow)
{
    ClosingCircumstances now = onABusWithoutATray();
    now.hasStatusItem = true;
    EXPECT_EQ(closingOf(now), Closing::closes);
    now = onABusWithoutATray();
    now.isProcessing = true;
    EXPECT_EQ(closingOf(now), Closing::closes);
    now = onABusWithoutATray();
    now.isLast = false;
    EXPECT_EQ(closingOf(now), Closing::closes);
}

TEST(ClosingTest, ThePreferenceEndsTheProgramWithItsLastWindowUnlessABatchRuns)
{
    ClosingCircumstances now = onABusWithoutATray();
    now.quitsByPreference = true;
    EXPECT_EQ(closingOf(now), Closing::quits);
    now.hasStatusItem = true;
    EXPECT_EQ(closingOf(now), Closing::quits);
    now.isProcessing = true;
    EXPECT_EQ(closingOf(now), Closing::closes);
    now.isProcessing = false;
    now.isLast = false;
    EXPECT_EQ(closingOf(now), Closing::closes);
}

TEST(ClosingTest, WithoutAWayBackItEndsTheProgramAndAsksInABatch)
{
    ClosingCircumstances now{.isLast = true};
    EXPECT_EQ(closingOf(now), Closing::quits);
    now.isProcessing = true;
    EXPECT_EQ(closingOf(now), Closing::asksToQuit);
}

} // namespace
} // namespace lumora
