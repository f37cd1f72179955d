// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/overwrite_prompter.h"

#include "model/main_thread_queue.h"

#include <QThread>

#include <condition_variable>
#include <mutex>
#include <optional>
#include <utility>

namespace lumora {

struct OverwritePrompter::Question
{
    Question(std::filesystem::path file, std::stop_token token)
        : output(std::move(file)), stop(std::move(token))
    {
    }

    const std::filesystem::path output;
    const std::stop_token stop;
    std::mutex mutex;
    std::condition_variable_any answered;
    std::optional<bool> answer; // guarded by mutex

    void settle(bool replace)
    {
        const std::lock_guard lock(mutex);
        answer = replace;
        answered.notify_one();
    }
    bool waitForAnswer()
    {
        std::unique_lock lock(mutex);
        return answered.wait(lock, stop, [this] { return answer.has_value(); }) && *answer;
    }
};

OverwritePrompter::OverwritePrompter(Ask ask, MainThreadQueue& mainThread)
    : m_ask(std::move(ask)), m_mainThread(mainThread)
{
}

bool OverwritePrompter::confirm(const std::filesystem::path& output, const std::stop_token& stop)
{
    if (!m_ask) return false;
    // A batch that got no thread works on this one, which must not wait for itself.
    if (QThread::currentThread() == m_mainThread.thread()) return m_ask(output);
    const auto question = std::make_shared<Question>(output, stop);
    m_mainThread.post([this, question] {
        m_waiting.push_back(question);
        askWaiting();
    });
    return question->waitForAnswer();
}

void OverwritePrompter::askWaiting()
{
    if (m_isAsking) return; // a dialog stands further up the stack; its end comes back for the rest
    m_isAsking = true;
    while (!m_waiting.empty()) {
        const auto question = std::move(m_waiting.front());
        m_waiting.pop_front();
        if (!question->stop.stop_requested()) question->settle(m_ask(question->output));
    }
    m_isAsking = false;
}

} // namespace lumora
