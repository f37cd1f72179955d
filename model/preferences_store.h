// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One preferences file of this process, shared by all who have it open. A value that was set reads back at
// once and reaches the file when no more of them come for a while, for writing waits for the disk; the end of
// the program and of the last holder write too. What another program writes meanwhile counts as if it stood
// in the file before: it stays, and where both set one key the later of the two wins. Main thread only.
#pragma once

#include "model/delay.h"

#include <QFileSystemWatcher>
#include <QHash>
#include <QObject>
#include <QSettings>
#include <QString>
#include <QVariant>

#include <memory>

namespace lumora {

class PreferencesStore : public QObject
{
    Q_OBJECT

public:
    // The one of this file.
    static std::shared_ptr<PreferencesStore> open(const QString& fileName);
    explicit PreferencesStore(const QString& fileName, const DelayFactory& makeDelay = makeTimerDelay);
    ~PreferencesStore() override;

    QString fileName() const { return m_file.fileName(); }
    QVariant value(const QString& key);
    void setValue(const QString& key, const QVariant& value);

Q_SIGNALS:
    // Some key may hold another value now.
    void touched();

private:
    struct Unsaved
    {
        QVariant value;
        QVariant before; // what the file held when it was set
    };

    void readFile();
    void writeFile();
    void watch();

    QSettings m_file;
    QFileSystemWatcher m_watcher;
    QHash<QString, Unsaved> m_unsaved;
    const std::unique_ptr<Delay> m_writing;
};

} // namespace lumora
