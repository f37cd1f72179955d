// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the lifetime totals in Lumora/stats.json of the user's data folder. The record in memory is what
// counts; a file that cannot be read starts it at zero, and one that cannot be written is tried again with
// the next change. Each save replaces the file in one step, so that a program killed meanwhile leaves the old
// or the new totals; it does not wait for the disk. Main thread only.
#pragma once

#include "model/lifetime_stats.h"
#include "records/processing_result.h"

#include <QObject>

#include <filesystem>
#include <functional>

namespace lumora {

class StatsStore : public QObject
{
    Q_OBJECT

public:
    using Now = std::function<LifetimeStats::Clock::time_point()>;

    // $XDG_DATA_HOME when it is an absolute path that exists or can be made, else ~/.local/share.
    static std::filesystem::path userDataFolder();

    // Makes the folder Lumora in `dataFolder` and reads the totals; writes no file yet.
    explicit StatsStore(const std::filesystem::path& dataFolder = userDataFolder(),
                        Now now = LifetimeStats::Clock::now, QObject* parent = nullptr);

    const LifetimeStats& stats() const { return m_stats; }

    // Both save at once.
    void record(const ProcessingResult& result);
    void reset();

Q_SIGNALS:
    void statsChanged();

private:
    void save();

    const std::filesystem::path m_file;
    const Now m_now;
    LifetimeStats m_stats;
};

} // namespace lumora
