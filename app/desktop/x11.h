// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The few questions that Qt does not put to an X server. Main thread.
#pragma once

#include <xcb/xcb.h>

#include <QByteArray>
#include <QPoint>

#include <string_view>

namespace lumora::x11 {

// Null where the windows are not on an X server; all below needs one.
xcb_connection_t* connection();
int screenNumber();
xcb_window_t rootWindow(xcb_connection_t* connection);

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name);
// XCB_WINDOW_NONE when nobody owns it.
xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection);
// Adds events of a window to those that this client already gets.
void selectEvents(xcb_connection_t* connection, xcb_window_t window, uint32_t events);
// The bytes of a property of 32-bit items; empty when it is absent.
QByteArray property(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property);
// Where the window's upper left corner lies on the screen, in its pixels.
QPoint positionOnRoot(xcb_connection_t* connection, xcb_window_t window);

} // namespace lumora::x11
