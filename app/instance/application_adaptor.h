// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The bus interface org.freedesktop.Application of the running program. Method and argument names are the
// interface's own.
#pragma once

#include <QDBusAbstractAdaptor>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <filesystem>
#include <functional>
#include <vector>

class QDBusContext;

namespace lumora {

// What the bus may ask of the program. `token` is the caller's leave to raise a window; it may be empty.
struct ApplicationRequests
{
    std::function<void(const QByteArray& token)> activate;
    std::function<void(const QByteArray& token)> showPreferences;
    std::function<void(const std::vector<std::filesystem::path>&)> open;
    std::function<bool()> isEnding; // then everything is refused
};

class ApplicationAdaptor : public QDBusAbstractAdaptor
{
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    // `owner` is the object on the bus, `context` that of the calls to it.
    ApplicationAdaptor(ApplicationRequests requests, const QDBusContext& context, QObject* owner);

public Q_SLOTS:
    void Activate(const QVariantMap& platform_data);
    void Open(const QStringList& uris, const QVariantMap& platform_data);
    void ActivateAction(const QString& action_name, const QVariantList& parameter,
                        const QVariantMap& platform_data);

private:
    bool refuses();

    const ApplicationRequests m_requests;
    const QDBusContext& m_context;
};

} // namespace lumora
