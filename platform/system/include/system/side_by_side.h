// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Pictures are worked on side by side, so one thread does for each, unless its process is told that other
// processors have nothing to do. Any thread.
#pragma once

#include <cstddef>
#include <functional>

namespace lumora {

// How many processors, at least 1, the process may keep busy from now on.
void useProcessors(int count);
int usedProcessors();

// work(0) to work(count - 1), each once, in any order, on as many threads as there are processors to use, or
// fewer where the system refuses them. Throws what one of them threw, when none runs any more; then some may
// never have been called.
void runSideBySide(std::size_t count, const std::function<void(std::size_t)>& work);

} // namespace lumora
