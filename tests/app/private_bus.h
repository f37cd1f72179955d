// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A message bus of one test's own. Nothing of the session that the tests run in is reached.
#pragma once

#include <QDBusConnection>
#include <QProcess>
#include <QString>

#include <stdexcept>

namespace lumora::test {

class PrivateBus
{
public:
    PrivateBus()
    {
        m_daemon.start(
            QStringLiteral("dbus-daemon"),
            {QStringLiteral("--session"), QStringLiteral("--nofork"), QStringLiteral("--print-address")});
        if (!m_daemon.waitForStarted() || !m_daemon.waitForReadyRead(10000))
            throw std::runtime_error("cannot start dbus-daemon");
        m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
    }
    ~PrivateBus()
    {
        for (const QString& name : m_connections)
            QDBusConnection::disconnectFromBus(name);
        m_daemon.terminate();
        m_daemon.waitForFinished(10000);
    }

    QDBusConnection connect()
    {
        static int count = 0;
        m_connections.append(QStringLiteral("test-%1").arg(++count));
        return QDBusConnection::connectToBus(m_address, m_connections.last());
    }

private:
    QProcess m_daemon;
    QString m_address;
    QStringList m_connections;
};

} // namespace lumora::test
