// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/batch_pace.h"

#include <algorithm>

namespace lumora {
namespace {

using namespace std::chrono_literals;

// The first files say little: caches are cold, and workers start together.
constexpr auto leastEvidence = 2s;

QString about(std::int64_t count, const char* unit)
{
    return QStringLiteral("About %1 %2%3 left")
        .arg(count)
        .arg(QLatin1String(unit), count == 1 ? QLatin1String() : QLatin1String("s"));
}

std::int64_t roundedUp(BatchPace::Clock::duration time, std::chrono::seconds unit)
{
    return (time + unit - 1ns) / unit;
}

} // namespace

BatchPace::BatchPace(int completed, int total, Time now)
    : m_completedBefore(completed), m_completed(completed), m_total(total), m_started(now)
{
}

void BatchPace::progressed(int completed, Time now)
{
    m_completed = completed;
    m_workedUntilLast = worked(now);
}

void BatchPace::setPaused(bool paused, Time now)
{
    if (paused == m_pausedSince.has_value()) return;
    if (!paused) m_rested += now - *m_pausedSince;
    m_pausedSince = paused ? std::optional(now) : std::nullopt;
}

BatchPace::Clock::duration BatchPace::worked(Time now) const
{
    return m_pausedSince.value_or(now) - m_started - m_rested;
}

std::optional<BatchPace::Clock::duration> BatchPace::timeLeft(Time now) const
{
    const int done = m_completed - m_completedBefore;
    if (m_pausedSince || done <= 0 || worked(now) < leastEvidence) return std::nullopt;
    const auto ofRest = m_workedUntilLast / done * (m_total - m_completed);
    const auto left = std::max<Clock::duration>(ofRest - (worked(now) - m_workedUntilLast), 0s);
    return worked(now) + left > longBatch ? std::optional(left) : std::nullopt;
}

QString timeLeftText(BatchPace::Clock::duration left)
{
    if (left > 90min) return about(roundedUp(left, 3600s), "hour");
    if (left > 50s) return about(roundedUp(left, 60s), "minute");
    if (left > 10s) return about(roundedUp(left, 10s) * 10, "second");
    return QStringLiteral("A few seconds left");
}

} // namespace lumora
