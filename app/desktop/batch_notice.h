// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the user that a batch is done when he does not look at the drop window: one from the launcher or the
// status item, and any that took long. Main thread.
#pragma once

#include "model/result_text.h"

#include <QObject>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

namespace lumora {

class ProcessingModel;

class BatchNotice : public QObject
{
public:
    using Notify = std::function<void(const QString& summary, const QString& body)>;
    using Clock = std::chrono::steady_clock;
    using Now = std::function<Clock::time_point()>;

    // `isWatched` answers whether the user sees the results anyhow. The model outlives this object.
    BatchNotice(const ProcessingModel& model, std::function<bool()> isWatched, Notify notify,
                Now now = Clock::now, QObject* parent = nullptr);

    // Files came that the user shall hear of. Call it before the model takes them.
    void expect();

    // Says what is due. Happens by itself, but only when the event loop comes round to it.
    void update();

private:
    void processingChanged();
    bool tookLong() const;
    void announce();

    const ProcessingModel& m_model;
    const std::function<bool()> m_isWatched;
    const Notify m_notify;
    const Now m_now;
    bool m_isExpected = false;
    std::optional<Clock::time_point> m_started; // of the batch that runs, or the first of those in a row
    ResultTotals m_totals;                      // since then, or since files were expected
};

} // namespace lumora
