// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Carries the workers' questions about existing output files to the main thread, where they are asked one
// after another; each holds up its own worker only.
#pragma once

#include <deque>
#include <filesystem>
#include <functional>
#include <memory>
#include <stop_token>

namespace lumora {

class MainThreadQueue;

class OverwritePrompter
{
public:
    using Ask = std::function<bool(const std::filesystem::path&)>;

    // `ask` runs on the main thread and may run an event loop of its own. `mainThread` outlives the prompter,
    // and the prompter outlives the calls of confirm and of `ask`.
    OverwritePrompter(Ask ask, MainThreadQueue& mainThread);

    // Any thread but the main one. Blocks until the answer; true replaces. A stop answers with skip at once,
    // and a question that was not shown by then never is.
    bool confirm(const std::filesystem::path& output, const std::stop_token& stop);

private:
    struct Question;
    void askWaiting();

    const Ask m_ask;
    MainThreadQueue& m_mainThread;
    // Main thread.
    bool m_isAsking = false;
    std::deque<std::shared_ptr<Question>> m_waiting;
};

} // namespace lumora
