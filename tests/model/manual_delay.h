// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A clock that a test moves by hand, behind the model's delayed calls.
#pragma once

#include "model/delay.h"

#include <optional>
#include <utility>

namespace lumora::test {

class ManualDelay : public Delay
{
public:
    // `owner` is told of this delay for as long as it lives.
    ManualDelay(ManualDelay*& owner, std::function<void()> call) : m_call(std::move(call)) { owner = this; }
    void restart(std::chrono::milliseconds pause) override { m_left = pause; }
    void stop() override { m_left.reset(); }

    bool isRunning() const { return m_left.has_value(); }
    void advance(std::chrono::milliseconds time)
    {
        if (!m_left) return;
        *m_left -= time;
        if (m_left->count() > 0) return;
        m_left.reset();
        m_call();
    }

private:
    std::function<void()> m_call;
    std::optional<std::chrono::milliseconds> m_left;
};

} // namespace lumora::test
