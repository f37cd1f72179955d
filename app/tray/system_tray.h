// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The tray of an X11 desktop that takes whole windows in (the system tray protocol, freedesktop.org). Such a
// window gets drops and clicks as any other. Inert where the windows are not on an X server. Main thread.
#pragma once

#include "app/desktop/x11.h"

#include <QAbstractNativeEventFilter>
#include <QColor>
#include <QObject>
#include <QWindow>

namespace lumora {

class SystemTray : public QObject, private QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit SystemTray(QObject* parent = nullptr);
    ~SystemTray() override;

    bool isPresent() const { return m_owner != XCB_WINDOW_NONE; }

    // Asks the tray to take the window in; `docked` follows. The window must not be shown before that.
    void dock(WId window);

    // What the tray paints its symbols in; invalid when it does not say.
    QColor symbolColor() const;

Q_SIGNALS:
    // A tray came or went. Windows inside a tray that went are lost.
    void changed();
    void docked();

private:
    bool nativeEventFilter(const QByteArray& type, void* message, qintptr* result) override;
    void handleClientMessage(const xcb_client_message_event_t& event);
    void findOwner();
    void announceDocked();

    xcb_connection_t* m_connection;
    xcb_window_t m_owner = XCB_WINDOW_NONE;
    xcb_window_t m_docking = XCB_WINDOW_NONE; // the window that waits to be taken in
    xcb_atom_t m_selection = XCB_ATOM_NONE;
    xcb_atom_t m_manager = XCB_ATOM_NONE;
    xcb_atom_t m_xembed = XCB_ATOM_NONE;
};

} // namespace lumora
