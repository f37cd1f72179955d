// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/version_text.h"

#include "platform/application_bundle.h"

namespace lumora {

QString versionText()
{
    const auto bundle = mainBundleURL();
    const auto value = [&bundle](const char* key, const char* otherwise) {
        return QString::fromStdString(infoDictionaryValue(bundle, key).value_or(otherwise));
    };
    return QStringLiteral("Version %1 (%2)")
        .arg(value("CFBundleShortVersionString", "0.0"), value("CFBundleVersion", "0"));
}

} // namespace lumora
