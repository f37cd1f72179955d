// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "system/result.h"

namespace lumora {

// Whether the system would start as many threads as the HEVC libraries use for one picture, which wait for
// ever for one that it refuses. An Error is outOfMemory(). Any thread.
Status findHevcThreads();

} // namespace lumora
