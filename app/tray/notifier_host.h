// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Whether a panel of this session shows StatusNotifierItems. Asked and followed over the bus, never waited
// for. Main thread.
#pragma once

#include <QDBusConnection>
#include <QObject>

namespace lumora {

class NotifierHost : public QObject
{
    Q_OBJECT

public:
    explicit NotifierHost(QDBusConnection bus, QObject* parent = nullptr);

Q_SIGNALS:
    // A host is there, from the start or since now.
    void present();

private Q_SLOTS:
    void ask();

private:
    QDBusConnection m_bus;
};

} // namespace lumora
