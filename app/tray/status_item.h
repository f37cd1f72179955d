// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the status item where the desktop has a place for it: the view with drops in a tray that takes
// windows, else an icon with the same menu where a StatusNotifierItem host runs, else nothing. Trays may come
// and go. Main thread.
#pragma once

#include "app/tray/drop_status_item_view.h"
#include "app/tray/notifier_host.h"
#include "app/tray/system_tray.h"

#include <QObject>
#include <QSystemTrayIcon>

#include <memory>

namespace lumora {

class DesktopSettings;

class StatusItem : public QObject
{
    Q_OBJECT

public:
    // Intake and settings outlive this object.
    StatusItem(StatusItemActions actions, FileIntake& intake, const DesktopSettings& settings,
               const QDBusConnection& bus, QObject* parent = nullptr);
    ~StatusItem() override;

    // The user sees the item somewhere.
    bool isPresent() const { return m_view || m_icon; }

private:
    void update();
    void dockView();
    void showIcon();
    void updateColors();

    const StatusItemActions m_actions;
    FileIntake& m_intake;
    const DesktopSettings& m_settings;
    SystemTray m_tray;
    NotifierHost m_notifierHost;
    bool m_hasNotifierHost = false;
    std::unique_ptr<DropStatusItemView> m_view;
    std::unique_ptr<QMenu> m_iconMenu;
    std::unique_ptr<QSystemTrayIcon> m_icon;
};

} // namespace lumora
