// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/compositor.h"

#include "app/desktop/x11.h"

#include <QGuiApplication>

#include <string>

namespace lumora {

bool compositorRuns()
{
    if (xcb_connection_t* connection = x11::connection()) {
        const std::string name = "_NET_WM_CM_S" + std::to_string(x11::screenNumber());
        return x11::selectionOwner(connection, x11::atom(connection, name)) != XCB_WINDOW_NONE;
    }
    return QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

} // namespace lumora
