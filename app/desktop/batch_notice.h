// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Tells the user that a batch from the launcher or the status item is done when he does not look at the drop
// window. Main thread.
#pragma once

#include <QObject>
#include <QString>

#include <functional>

namespace lumora {

class ProcessingModel;

class BatchNotice : public QObject
{
public:
    using Notify = std::function<void(const QString& summary, const QString& body)>;

    // `isWatched` answers whether the user sees the results anyhow. The model outlives this object.
    BatchNotice(const ProcessingModel& model, std::function<bool()> isWatched, Notify notify,
                QObject* parent = nullptr);

    // Files came that the user shall hear of. Call it before the model takes them.
    void expect();

    // Says what is due. Happens by itself, but only when the event loop comes round to it.
    void update();

private:
    void announce();

    const ProcessingModel& m_model;
    const std::function<bool()> m_isWatched;
    const Notify m_notify;
    bool m_isExpected = false;
    int m_countBefore = 0; // results that were there when the files came
};

} // namespace lumora
