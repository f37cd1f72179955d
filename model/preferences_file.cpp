// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/preferences_file.h"

#include <QDir>
#include <QFileInfo>

namespace lumora {
namespace {

// A file that does not exist yet shows up in its folder, a folder that does not in its parent.
QString nearestExistingFolder(const QString& fileName)
{
    QDir folder = QFileInfo(fileName).absoluteDir();
    while (!folder.exists() && !folder.isRoot()) {
        folder = QFileInfo(folder.path()).absoluteDir();
    }
    return folder.path();
}

} // namespace

QString PreferencesFile::defaultFileName()
{
    return QSettings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("Tidewell"),
                     QStringLiteral("Lumora"))
        .fileName();
}

PreferencesFile::PreferencesFile(const QString& fileName, QObject* parent)
    : QObject(parent), m_store(fileName, QSettings::IniFormat)
{
    const auto onChange = [this] {
        watch();
        announceChanges();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, onChange);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, onChange);
    watch();
}

QVariant PreferencesFile::value(const QString& key)
{
    m_store.sync(); // one look at the file's size and time when nothing changed
    return m_store.value(key);
}

void PreferencesFile::setValue(const QString& key, const QVariant& value)
{
    m_store.setValue(key, value);
    m_store.sync();
    announceChanges();
}

void PreferencesFile::follow(const QString& key)
{
    m_announced.insert(key, value(key));
}

void PreferencesFile::announceChanges()
{
    m_store.sync();
    QStringList changedKeys;
    for (auto known = m_announced.begin(); known != m_announced.end(); ++known) {
        const QVariant now = m_store.value(known.key());
        if (now == *known) continue;
        *known = now;
        changedKeys.append(known.key());
    }
    for (const QString& key : changedKeys)
        Q_EMIT changed(key);
}

// Programs replace the file rather than write into it, which ends the watch on the old one: watch anew each
// time.
void PreferencesFile::watch()
{
    const QStringList wanted{nearestExistingFolder(fileName()), fileName()};
    for (const QString& path : m_watcher.directories()) {
        if (path != wanted.first()) m_watcher.removePath(path);
    }
    for (const QString& path : wanted) {
        if (QFileInfo::exists(path)) m_watcher.addPath(path);
    }
}

} // namespace lumora
