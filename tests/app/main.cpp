// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/temporary_directory.h"

#include <QApplication>

#include <gtest/gtest.h>

// The views need an application object, and no test may reach the display, the bus or the settings of the
// user it runs for. All of the environment is set before there is a thread that could read it.
int main(int argc, char** argv)
{
    const lumora::test::TemporaryDirectory home;
    const QByteArray homePath(home.path().c_str());
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
        qputenv(variable, homePath);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("XDG_ACTIVATION_TOKEN", "token-1");
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/lumora-tests");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
