// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The per-user preferences: keys and typed values in an INI file that other programs may edit meanwhile. A
// missing or unreadable file reads as empty, a file that cannot be written keeps the values in memory;
// neither is reported. Main thread only.
#pragma once

#include "model/preferences_store.h"

#include <QHash>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

namespace lumora {

class PreferencesFile : public QObject
{
    Q_OBJECT

public:
    // The file of organisation Tidewell, application Lumora in the user's configuration folder.
    static QString defaultFileName();

    // Writes nothing; the file comes into being with the first value that is set.
    explicit PreferencesFile(const QString& fileName = defaultFileName(), QObject* parent = nullptr);

    QString fileName() const { return m_store->fileName(); }

    // What was set last, here or in the file; invalid when the key is absent.
    QVariant value(const QString& key) { return m_store->value(key); }
    // Observers are told before it returns; the file follows.
    void setValue(const QString& key, const QVariant& value) { m_store->setValue(key, value); }

    // From now on `changed` tells of this key.
    void follow(const QString& key);

Q_SIGNALS:
    // A followed key holds another value than before, whoever wrote it: this object, another one, another
    // program.
    void changed(const QString& key);

private:
    void announceChanges();

    const std::shared_ptr<PreferencesStore> m_store;
    QHash<QString, QVariant> m_announced; // the followed keys with the values that observers know of
};

} // namespace lumora
