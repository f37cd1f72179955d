// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Assigns 1 to 200 to one setting, one after another, and writes each: write_setting FILE
// quality|maximumPixels.
#include "model/lumora_settings.h"

#include <QCoreApplication>

#include <string_view>

int main(int count, char** arguments)
{
    if (count != 3) return 2;
    const QCoreApplication application(count, arguments);
    for (int value = 1; value <= 200; ++value) {
        lumora::LumoraSettings settings(QString::fromLocal8Bit(arguments[1]));
        if (std::string_view(arguments[2]) == "quality") {
            settings.quality.set(value);
        } else {
            settings.maximumPixels.set(value);
        }
    }
}
