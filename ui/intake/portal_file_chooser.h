// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop's own panel for choosing files, as its portal shows it. It chooses files or folders, never both
// at once. Main thread.
#pragma once

#include <QDBusConnection>

#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

class QObject;

namespace lumora {

enum class ChosenKind { images, folders };

// Tells once, through the event loop and within two seconds, whether there is such a panel. Never once
// `context` is gone.
void findPortalChooser(const QDBusConnection& bus, QObject* context, std::function<void(bool found)> tell);

using PortalChoice = std::function<void(std::optional<std::vector<std::filesystem::path>>)>;

// Opens it for the window of this portal identifier ("x11:1a0", or empty) and answers once, at the latest
// when the user closes it: what was chosen, which is nothing where the user cancels; absent where the panel
// could not be shown. Never once `context` is gone.
void chooseInPortal(const QDBusConnection& bus, const QString& window, ChosenKind kind, QObject* context,
                    PortalChoice answer);

} // namespace lumora
