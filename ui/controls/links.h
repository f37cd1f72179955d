// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The maker's addresses, in this one place. The domain is reserved for examples.
#pragma once

#include <QUrl>

namespace lumora::links {

inline QUrl website()
{
    return QUrl(QStringLiteral("https://tidewell.example/"));
}

inline QUrl donations()
{
    return QUrl(QStringLiteral("https://tidewell.example/coffee"));
}

} // namespace lumora::links
