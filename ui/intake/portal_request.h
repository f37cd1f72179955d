// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A question to the desktop's portal, whose answer comes later as a signal of an object made for it. Main
// thread.
#pragma once

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QVariantMap>

#include <functional>
#include <optional>

namespace lumora {

class PortalRequest : public QObject
{
    Q_OBJECT

public:
    // Absent where the portal refused; else what it answered, which is empty when the user cancelled.
    using Answer = std::function<void(std::optional<QVariantMap>)>;

    PortalRequest(QDBusConnection bus, Answer answer, QObject* parent);

    // The option "handle_token" of the call, by which the portal names the object.
    const QString& token() const { return m_token; }
    // The call was answered with the name of the object, which old portals choose themselves, or failed.
    void begun(const std::optional<QString>& handle);

private Q_SLOTS:
    void response(uint code, const QVariantMap& results);

private:
    void listen(const QString& handle);
    void end(const std::optional<QVariantMap>& results);

    QDBusConnection m_bus;
    Answer m_answer;
    const QString m_token;
    QString m_handle;
};

} // namespace lumora
