// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Files and pages in the user's other programs. Each call returns at once and reports nothing: what a desktop
// cannot do leaves the user where he was. Main thread.
#pragma once

#include <QDBusConnection>

#include <filesystem>

class QUrl;

namespace lumora {

// In the file browser, selected in its folder; where no file browser answers, the folder is opened.
void showInFileBrowser(const QDBusConnection& bus, const std::filesystem::path& file);

// In the program that the desktop prefers for it.
void openFile(const std::filesystem::path& file);

// A web page in the browser; an address that is no URL does nothing.
void openLink(const QUrl& link);

} // namespace lumora
