// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The road of files to the processing model, whether they were dropped, pasted, chosen or sent over the bus:
// fetched from the portal where it keeps them, filtered off the main thread (asking a slow disk whether an
// item is a folder must not hold the window), handed over once for each load.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QThreadPool>

#include <filesystem>
#include <functional>
#include <vector>

class QMimeData;

namespace lumora {

// Main thread.
class FileIntake : public QObject
{
    Q_OBJECT

public:
    using Paths = std::vector<std::filesystem::path>;
    using Take = std::function<void(const Paths&)>;

    // `bus` leads to the portal.
    explicit FileIntake(QDBusConnection bus, QObject* parent = nullptr);
    // Waits for the look at a disk that is under way.
    ~FileIntake() override;

    // Each load ends in exactly one call of `take`, on the main thread and through the event loop, with the
    // items that can be or hold images, in their order; there may be none. Loads of lists end in the order in
    // which they began. No call comes once the object is gone.
    void load(Paths items, Take take);
    // Files of a portal transfer are fetched from the portal; where that fails, the plain list counts.
    void load(const QMimeData& data, Take take);

    // Between a load and its call.
    bool isLoading() const { return m_loading > 0; }

Q_SIGNALS:
    // The last load under way has ended, after its call.
    void idle();

private:
    void filter(Paths items, Take take);
    void end(const Paths& items, const Take& take);

    const QDBusConnection m_bus;
    int m_loading = 0;
    QThreadPool m_filters; // one thread: a later list does not overtake an earlier one
};

} // namespace lumora
