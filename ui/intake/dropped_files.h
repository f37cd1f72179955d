// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The road of dropped, pasted or chosen items to the processing model: decoded to byte paths, filtered off
// the main thread (asking a slow disk whether an item is a folder must not hold the window), handed over once
// per drop.
#pragma once

#include <QObject>

#include <filesystem>
#include <functional>
#include <vector>

class QMimeData;

namespace lumora {

// True where the data announces files of this machine. A list announced but still empty counts: some file
// managers fill it only at the drop. A list of remote addresses alone does not.
bool offersFiles(const QMimeData& data);

// Main thread. Each load ends in exactly one call of the hand-over, on the main thread and through the event
// loop, with the items that can be or hold images; the list may be empty. No call comes once the object is
// gone.
class DroppedFilesLoader : public QObject
{
public:
    using Paths = std::vector<std::filesystem::path>;
    using HandOver = std::function<void(const Paths&)>;

    explicit DroppedFilesLoader(HandOver handOver, QObject* parent = nullptr);

    // Files of a portal transfer are fetched from the portal; where that fails, the plain list counts.
    void load(const QMimeData& data);
    void load(Paths items);

private:
    HandOver m_handOver;
};

} // namespace lumora
