// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/setting_binding.h"

#include <QtGlobal>

#include <cmath>

namespace lumora {

std::int64_t wholeQuality(double quality)
{
    constexpr double limit = 9223372036854775808.0; // 2 to the power of 63
    if (!(quality >= -limit && quality < limit)) {
        qFatal("The stored quality is not a usable number. Remove the line \"quality\" from the preferences "
               "file.");
    }
    return static_cast<std::int64_t>(std::trunc(quality));
}

} // namespace lumora
