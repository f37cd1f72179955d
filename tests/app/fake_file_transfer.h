// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The portal that keeps the files of a drop from a sandbox, on a test's own bus.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace lumora::test {

class FakeFileTransfer : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileTransfer")

public:
    FakeFileTransfer(QDBusConnection bus, QStringList files) : m_files(std::move(files))
    {
        bus.registerObject(QStringLiteral("/org/freedesktop/portal/documents"), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.portal.Documents"));
    }
    QString key; // that the files were fetched with

public Q_SLOTS:
    QStringList RetrieveFiles(const QString& newKey, const QVariantMap&)
    {
        key = newKey;
        return m_files;
    }

private:
    const QStringList m_files;
};

} // namespace lumora::test
