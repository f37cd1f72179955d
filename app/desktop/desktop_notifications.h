// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Messages in the desktop's notification area. Without a notification service nothing happens. Main thread.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>

namespace lumora {

class DesktopNotifications : public QObject
{
    Q_OBJECT

public:
    explicit DesktopNotifications(QDBusConnection bus, QObject* parent = nullptr);

    // Replaces the message before it, so that many batches leave one. Returns at once.
    void notify(const QString& summary, const QString& body);

Q_SIGNALS:
    // The user chose "Show" or clicked the message.
    void showRequested();

private Q_SLOTS:
    void invoked(quint32 id, const QString& action);

private:
    QDBusConnection m_bus;
    quint32 m_id = 0; // of the last message; 0 before the first
};

} // namespace lumora
