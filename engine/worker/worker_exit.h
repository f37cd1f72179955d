// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora::ImageOptimizer {

// The exit status of a worker that could not go on for lack of memory.
inline constexpr int outOfMemoryExit = 77;

} // namespace lumora::ImageOptimizer
