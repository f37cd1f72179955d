// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The event loop of the tests' main thread.
#pragma once

#include <functional>

namespace lumora::test {

// Handles events until the condition holds; false when that takes longer than any machine needs.
bool waitUntil(const std::function<bool()>& condition);

// Handles what is waiting now.
void handleEvents();

} // namespace lumora::test
