// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is known of a picture once its rows were made. A codec that takes them reports no more than that it
// failed; this tells its own failures from those of the picture. Thread-safe.
#pragma once

#include "system/result.h"

#include <atomic>
#include <mutex>
#include <optional>
#include <utility>

namespace lumora {

class ReadOutcome
{
public:
    // The first failure stays.
    void fail(Error error)
    {
        const std::scoped_lock lock(m_mutex);
        if (!m_error) m_error = std::move(error);
    }
    // Takes no memory to say so.
    void failForMemory() noexcept
    {
        const std::scoped_lock lock(m_mutex);
        m_isOutOfMemory = true;
    }
    // Every row of the picture has been made.
    void complete()
    {
        const std::scoped_lock lock(m_mutex);
        m_isComplete = true;
    }
    bool isComplete() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_isComplete;
    }
    std::optional<Error> error() const
    {
        const std::scoped_lock lock(m_mutex);
        return m_isOutOfMemory ? outOfMemory() : m_error;
    }

    // Whether a pixel was met that is not opaque, in rows that were drawn.
    void noteTransparency() { m_hasTransparency = true; }
    bool hasTransparency() const { return m_hasTransparency; }

private:
    mutable std::mutex m_mutex;
    std::optional<Error> m_error;
    bool m_isOutOfMemory = false;
    std::atomic<bool> m_hasTransparency = false;
    bool m_isComplete = false;
};

} // namespace lumora
