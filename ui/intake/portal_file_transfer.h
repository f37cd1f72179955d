// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files dropped by or into a sandboxed application: the drop carries a key instead of paths that this process
// could open, and the desktop portal hands out the files for it. Main thread.
#pragma once

#include <QDBusConnection>
#include <QString>

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

class QMimeData;
class QObject;

namespace lumora {

// The transfer's key; empty where the data offers no transfer.
QString portalTransferKey(const QMimeData& data);

using PortalAnswer = std::function<void(std::optional<std::vector<std::filesystem::path>>)>;

// Answers once, through the event loop: the transfer's files, or nothing where there is no portal, it refuses
// or stays silent for ten seconds. Never answers once `context` is gone.
void retrievePortalFiles(const QDBusConnection& bus, const QString& key, QObject* context,
                         PortalAnswer answer);

} // namespace lumora
