// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a worker's program and whoever starts it have agreed on.
#pragma once

namespace lumora::ImageOptimizer {

// The exit status of a worker that could not go on for lack of memory.
inline constexpr int outOfMemoryExit = 77;

// The one argument of a worker that is to encode HEVC. The encoder takes as long to get ready as a small
// picture takes, and cannot once the worker is confined.
inline constexpr const char* hevcArgument = "hevc";

} // namespace lumora::ImageOptimizer
