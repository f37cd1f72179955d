// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/preferences_store.h"

#include "model/setting_conversion.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <chrono>

namespace lumora {
namespace {

// Longer than between two steps of a slider that is being moved.
constexpr std::chrono::milliseconds rest{300};

// A file that does not exist yet shows up in its folder, a folder that does not in its parent.
QString nearestExistingFolder(const QString& fileName)
{
    QDir folder = QFileInfo(fileName).absoluteDir();
    while (!folder.exists() && !folder.isRoot()) {
        folder = QFileInfo(folder.path()).absoluteDir();
    }
    return folder.path();
}

// Opening a pipe or a device in the file's place could wait for ever: then the settings last as long as the
// program.
QString readableFile(const QString& fileName)
{
    const QFileInfo file(fileName);
    const bool mayWait = file.exists() && !file.isFile() && !file.isDir();
    return mayWait ? QStringLiteral("/dev/null/") + file.fileName() : fileName;
}

} // namespace

std::shared_ptr<PreferencesStore> PreferencesStore::open(const QString& fileName)
{
    static QHash<QString, std::weak_ptr<PreferencesStore>> stores;
    const QString name = QFileInfo(fileName).absoluteFilePath();
    if (auto store = stores.value(name).lock()) return store;
    auto store = std::make_shared<PreferencesStore>(name);
    stores.insert(name, store);
    return store;
}

PreferencesStore::PreferencesStore(const QString& fileName, const DelayFactory& makeDelay)
    : m_file(readableFile(fileName), QSettings::IniFormat), m_writing(makeDelay([this] { writeFile(); }))
{
    const auto onChange = [this] {
        watch();
        Q_EMIT touched();
    };
    connect(&m_watcher, &QFileSystemWatcher::fileChanged, this, onChange);
    connect(&m_watcher, &QFileSystemWatcher::directoryChanged, this, onChange);
    watch();
    if (const auto* application = QCoreApplication::instance())
        connect(application, &QCoreApplication::aboutToQuit, this, &PreferencesStore::writeFile);
}

PreferencesStore::~PreferencesStore()
{
    writeFile();
}

QVariant PreferencesStore::value(const QString& key)
{
    readFile();
    const auto unsaved = m_unsaved.constFind(key);
    return unsaved != m_unsaved.cend() ? unsaved->value : m_file.value(key);
}

void PreferencesStore::setValue(const QString& key, const QVariant& value)
{
    readFile();
    const QVariant before = m_file.value(key);
    if (isStoredAlike(value, before))
        m_unsaved.remove(key);
    else
        m_unsaved.insert(key, {value, before});
    m_writing->restart(rest);
    Q_EMIT touched();
}

// One look at the file's size and time when nothing changed. A key that holds something else than when it was
// set here was set by another program since.
void PreferencesStore::readFile()
{
    m_file.sync();
    for (auto unsaved = m_unsaved.begin(); unsaved != m_unsaved.end();) {
        const bool isSuperseded = !isStoredAlike(m_file.value(unsaved.key()), unsaved->before);
        unsaved = isSuperseded ? m_unsaved.erase(unsaved) : std::next(unsaved);
    }
}

void PreferencesStore::writeFile()
{
    m_writing->stop();
    readFile();
    if (m_unsaved.isEmpty()) return;
    for (auto unsaved = m_unsaved.cbegin(); unsaved != m_unsaved.cend(); ++unsaved)
        m_file.setValue(unsaved.key(), unsaved->value);
    m_unsaved.clear();
    m_file.sync();
}

// Programs replace the file rather than write into it, which ends the watch on the old one: watch anew each
// time.
void PreferencesStore::watch()
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
