// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Runs the view tests without a display, with one font and one locale on every machine.
#include "ui/theme/fonts.h"
#include "ui/theme/lumora_style.h"

#include <QApplication>
#include <QLocale>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QLocale::setDefault(QLocale::c());
    QApplication::setFont(QFont(QStringLiteral("Inter")));
    QApplication::setStyle(new lumora::LumoraStyle);
    lumora::fonts::install(application, 1);
    return RUN_ALL_TESTS();
}
