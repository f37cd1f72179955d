// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The road back to the main thread: calls posted from anywhere run, in order, on the thread that made the
// queue, through its event loop. Woken by a descriptor rather than by posted events: the event loop handles
// posted events until none is left, so workers that post without pause could keep it from timers and input.
#pragma once

#include <QObject>

#include <functional>
#include <memory>

namespace lumora {

class MainThreadQueue : public QObject
{
    Q_OBJECT

public:
    explicit MainThreadQueue(QObject* parent = nullptr);
    // Calls that have not run are dropped. Must not happen inside one of the calls.
    ~MainThreadQueue() override;

    // Any thread, as long as the queue exists.
    void post(std::function<void()> call);

private:
    void run();

    struct Shared;
    std::unique_ptr<Shared> m_shared;
};

} // namespace lumora
