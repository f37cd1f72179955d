// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Questions to the history, answered off the main thread one after another: a large history takes its time,
// and another program may hold it. Main thread.
#pragma once

#include "model/main_thread_queue.h"
#include "model/worker_pool.h"

#include <functional>
#include <memory>
#include <utility>

namespace lumora {

class History;

class HistoryReader
{
public:
    explicit HistoryReader(std::shared_ptr<History> history) : m_history(std::move(history)) {}

    // Calls `take` on the main thread with what `question` returned, a value that can be copied. Answers that
    // are on their way when the reader goes are dropped; the question at work is waited for.
    template <class Question, class Take>
    void ask(Question question, Take take)
    {
        m_thread.run([this, question = std::move(question), take = std::move(take)] {
            m_mainThread.post([take, answer = question(*m_history)] { take(answer); });
        });
    }

private:
    const std::shared_ptr<History> m_history;
    MainThreadQueue m_mainThread;
    WorkerPool m_thread{1};
};

} // namespace lumora
