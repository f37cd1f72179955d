// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/preferences_file.h"

#include "model/setting_conversion.h"

#include <QSettings>

namespace lumora {

QString PreferencesFile::defaultFileName()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Tidewell"),
                     QStringLiteral("Lumora"))
        .fileName();
}

PreferencesFile::PreferencesFile(const QString& fileName, QObject* parent)
    : QObject(parent), m_store(PreferencesStore::open(fileName))
{
    connect(m_store.get(), &PreferencesStore::touched, this, &PreferencesFile::announceChanges);
}

void PreferencesFile::follow(const QString& key)
{
    m_announced.insert(key, value(key));
}

void PreferencesFile::announceChanges()
{
    QStringList changedKeys;
    for (auto known = m_announced.begin(); known != m_announced.end(); ++known) {
        const QVariant now = value(known.key());
        if (isStoredAlike(now, *known)) continue;
        *known = now;
        changedKeys.append(known.key());
    }
    for (const QString& key : changedKeys)
        Q_EMIT changed(key);
}

} // namespace lumora
