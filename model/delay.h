// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A call that comes after a pause; a test replaces the clock behind it. Main thread only.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace lumora {

class Delay
{
public:
    virtual ~Delay() = default;
    // Makes the call once, `pause` from now through the event loop; an earlier start is forgotten.
    virtual void restart(std::chrono::milliseconds pause) = 0;
    virtual void stop() = 0;
};

using DelayFactory = std::function<std::unique_ptr<Delay>(std::function<void()> call)>;

// On the event loop's timers.
std::unique_ptr<Delay> makeTimerDelay(std::function<void()> call);

} // namespace lumora
