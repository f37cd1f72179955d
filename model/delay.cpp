// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/delay.h"

#include <QObject>
#include <QTimer>

#include <utility>

namespace lumora {
namespace {

class TimerDelay : public Delay
{
public:
    explicit TimerDelay(std::function<void()> call)
    {
        m_timer.setSingleShot(true);
        m_timer.setTimerType(Qt::PreciseTimer);
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, std::move(call));
    }
    void restart(std::chrono::milliseconds pause) override { m_timer.start(pause); }
    void stop() override { m_timer.stop(); }

private:
    QTimer m_timer;
};

} // namespace

std::unique_ptr<Delay> makeTimerDelay(std::function<void()> call)
{
    return std::make_unique<TimerDelay>(std::move(call));
}

} // namespace lumora
