// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How fast a batch goes, and how long its rest will take at that pace. A value; the caller has the clock.
#pragma once

#include <QString>

#include <chrono>
#include <optional>

namespace lumora {

class BatchPace
{
public:
    using Clock = std::chrono::steady_clock;
    using Time = Clock::time_point;

    // A batch that takes longer is worth a word about its time.
    static constexpr std::chrono::seconds longBatch{10};

    BatchPace() = default;
    // A batch of `total` files, of which `completed` are done.
    BatchPace(int completed, int total, Time now);

    int total() const { return m_total; }
    void progressed(int completed, Time now);
    // The time of a pause counts as none.
    void setPaused(bool paused, Time now);

    // Absent while there is nothing to go by, while it is paused, and for a batch that is short as a whole.
    std::optional<Clock::duration> timeLeft(Time now) const;

private:
    Clock::duration worked(Time now) const;

    int m_completedBefore = 0;
    int m_completed = 0;
    int m_total = 0;
    Time m_started;
    Clock::duration m_workedUntilLast{0}; // the last completed file
    Clock::duration m_rested{0};
    std::optional<Time> m_pausedSince;
};

// "About 3 minutes left", coarse enough to stand still for a while.
QString timeLeftText(BatchPace::Clock::duration left);

} // namespace lumora
