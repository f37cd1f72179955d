// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The maker's pages. Tidewell stands under a domain that is reserved and leads nowhere until there is a real
// one.
#pragma once

#include <QUrl>

namespace lumora {

inline QUrl websiteLink()
{
    return QUrl(QStringLiteral("https://tidewell.example/"));
}

} // namespace lumora
