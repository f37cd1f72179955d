// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The desktop's services on a test's own bus, as far as the application talks to them.
#pragma once

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusVariant>
#include <QDesktopServices>
#include <QMap>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

namespace lumora::test {

class FakeFileManager : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    explicit FakeFileManager(QDBusConnection bus)
    {
        bus.registerObject(QStringLiteral("/org/freedesktop/FileManager1"), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.FileManager1"));
    }
    QStringList shown;

public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString&) { shown += uris; }
};

class FakeNotifications : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Notifications")

public:
    explicit FakeNotifications(QDBusConnection bus) : m_bus(bus)
    {
        bus.registerObject(QStringLiteral("/org/freedesktop/Notifications"), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.Notifications"));
    }
    void invoke(quint32 id, const QString& action)
    {
        QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"),
                                                         QStringLiteral("org.freedesktop.Notifications"),
                                                         QStringLiteral("ActionInvoked"));
        m_bus.send(signal << id << action);
    }

    int count = 0;
    quint32 lastId = 0;
    quint32 replaced = 0;
    QString summary;
    QString body;
    QStringList actions;

public Q_SLOTS:
    quint32 Notify(const QString&, quint32 replaces, const QString&, const QString& newSummary,
                   const QString& newBody, const QStringList& newActions, const QVariantMap&, int)
    {
        ++count;
        replaced = replaces;
        summary = newSummary;
        body = newBody;
        actions = newActions;
        lastId = replaces ? replaces : 41;
        return lastId;
    }

private:
    QDBusConnection m_bus;
};

class FakePortal : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.Settings")

public:
    using Settings = QMap<QString, QVariantMap>;

    explicit FakePortal(QDBusConnection bus) : m_bus(bus)
    {
        qDBusRegisterMetaType<Settings>();
        bus.registerObject(QStringLiteral("/org/freedesktop/portal/desktop"), this,
                           QDBusConnection::ExportAllSlots);
        bus.registerService(QStringLiteral("org.freedesktop.portal.Desktop"));
    }
    void change(const QString& space, const QString& key, const QVariant& value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/portal/desktop"),
                                                         QStringLiteral("org.freedesktop.portal.Settings"),
                                                         QStringLiteral("SettingChanged"));
        m_bus.send(signal << space << key << QVariant::fromValue(QDBusVariant(value)));
    }

    Settings settings;
    bool wasRead = false;

public Q_SLOTS:
    // By the message: the generated call cannot return a map of maps under this name.
    void ReadAll(const QStringList&, const QDBusMessage& message)
    {
        message.setDelayedReply(true);
        wasRead = true;
        m_bus.send(message.createReply(QVariant::fromValue(settings)));
    }

private:
    QDBusConnection m_bus;
};

class LauncherEntries : public QObject
{
    Q_OBJECT

public:
    explicit LauncherEntries(QDBusConnection bus)
    {
        bus.connect(QString(), QString(), QStringLiteral("com.canonical.Unity.LauncherEntry"),
                    QStringLiteral("Update"), this, SLOT(update(QString, QVariantMap)));
        // The bus listens from the answer to a later call on.
        bus.interface()->registeredServiceNames();
    }
    bool isVisible() const { return m_isVisible; }

    QString application;
    QList<double> updates;
    bool wasVisible = false;

public Q_SLOTS:
    void update(const QString& uri, const QVariantMap& properties)
    {
        application = uri;
        updates.append(properties.value(QStringLiteral("progress")).toDouble());
        m_isVisible = properties.value(QStringLiteral("progress-visible")).toBool();
        wasVisible = wasVisible || m_isVisible;
    }

private:
    bool m_isVisible = false;
};

// Takes what would be opened in the user's programs.
class OpenedUrls : public QObject
{
    Q_OBJECT

public:
    OpenedUrls() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~OpenedUrls() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QList<QUrl> urls;

public Q_SLOTS:
    void open(const QUrl& url) { urls.append(url); }
};

} // namespace lumora::test
