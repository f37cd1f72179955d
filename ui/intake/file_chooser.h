// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Lets the user choose images and folders: in the desktop's own panel where it has one, the portal's before
// the platform theme's. Such a panel chooses either files or folders, so a menu asks which. Elsewhere our own
// panel opens, which takes both. Main thread.
#pragma once

#include "ui/intake/files_and_folders_dialog.h"
#include "ui/intake/portal_file_chooser.h"

#include <QDBusConnection>
#include <QObject>

namespace lumora {

class FileChooser : public QObject
{
    Q_OBJECT

public:
    // `bus` leads to the portal.
    explicit FileChooser(QDBusConnection bus, QObject* parent = nullptr);

    // Returns at once; nothing is called where the user cancels. `parent` must outlive the panel or end it.
    void open(QWidget* parent, const ChosenFiles& chosen);

private:
    using Choose = std::function<void(ChosenKind)>;

    void openPortal(QWidget* parent, ChosenKind kind, const ChosenFiles& chosen);
    static void offerKinds(QWidget* parent, const Choose& choose);

    const QDBusConnection m_bus;
};

} // namespace lumora
