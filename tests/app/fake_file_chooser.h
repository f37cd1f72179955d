// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The portal's panel for files on a test's own bus; it answers at once.
#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QObject>
#include <QStringList>
#include <QVariantMap>

namespace lumora::test {

class FakeFileChooser : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.FileChooser")
    Q_PROPERTY(uint version READ version CONSTANT)

public:
    explicit FakeFileChooser(QDBusConnection bus) : m_bus(bus)
    {
        bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                           QDBusConnection::ExportAllSlots | QDBusConnection::ExportAllProperties);
        bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    static uint version() { return 3; }

    uint code = 0;
    QStringList uris;
    bool choosesItsOwnHandle = false; // as the first portals did
    bool refuses = false;
    QVariantMap options; // of the last call
    QString title;

public Q_SLOTS:
    QDBusObjectPath OpenFile(const QString&, const QString& newTitle, const QVariantMap& newOptions,
                             const QDBusMessage& message)
    {
        options = newOptions;
        title = newTitle;
        if (refuses) {
            message.setDelayedReply(true);
            m_bus.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no")));
            return {};
        }
        const QString sender = message.service().mid(1).replace(u'.', u'_');
        const QString token = choosesItsOwnHandle ? QStringLiteral("other")
                                                  : options.value(QStringLiteral("handle_token")).toString();
        const QString handle =
            QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2").arg(sender, token);
        // The reply first, as the order on the bus.
        message.setDelayedReply(true);
        m_bus.send(message.createReply(QVariant::fromValue(QDBusObjectPath(handle))));
        m_handle = handle;
        if (!waits) answer();
        return {};
    }

public:
    bool waits = false; // for answer()
    void answer()
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            m_handle, QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"));
        m_bus.send(signal << code << QVariantMap{{QStringLiteral("uris"), uris}});
    }

private:
    QDBusConnection m_bus;
    QString m_handle;
};

} // namespace lumora::test
