// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Byte counts in the words of the interface, with the decimal separator of the default locale.
#pragma once

#include "system/byte_count_text.h"

#include <QLocale>
#include <QString>

#include <cstdint>

namespace lumora {

inline QString byteText(std::int64_t bytes)
{
    return QString::fromStdString(byteCountText(bytes, QLocale().decimalPoint().toStdString()));
}

} // namespace lumora
