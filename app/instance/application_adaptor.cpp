// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/instance/application_adaptor.h"

#include "system/file_uris.h"

#include <QDBusContext>
#include <QDBusError>

namespace lumora {
namespace {

QByteArray activationToken(const QVariantMap& platformData)
{
    const QString token = platformData.value(QStringLiteral("activation-token")).toString();
    return (token.isEmpty() ? platformData.value(QStringLiteral("desktop-startup-id")).toString() : token)
        .toUtf8();
}

} // namespace

ApplicationAdaptor::ApplicationAdaptor(ApplicationRequests requests, const QDBusContext& context,
                                       QObject* owner)
    : QDBusAbstractAdaptor(owner), m_requests(std::move(requests)), m_context(context)
{
}

void ApplicationAdaptor::Activate(const QVariantMap& platform_data)
{
    if (!refuses()) m_requests.activate(activationToken(platform_data));
}

void ApplicationAdaptor::Open(const QStringList& uris, const QVariantMap&)
{
    if (refuses()) return;
    std::vector<std::filesystem::path> files;
    for (const QString& uri : uris) {
        if (auto path = pathFromFileUri(uri.toStdString())) files.push_back(std::move(*path));
    }
    m_requests.open(files);
}

void ApplicationAdaptor::ActivateAction(const QString& action_name, const QVariantList&,
                                        const QVariantMap& platform_data)
{
    if (refuses()) return;
    if (action_name == QLatin1String("preferences")) {
        m_requests.showPreferences(activationToken(platform_data));
    } else {
        m_context.sendErrorReply(QDBusError::InvalidArgs, QStringLiteral("There is no action of this name."));
    }
}

bool ApplicationAdaptor::refuses()
{
    if (!m_requests.isEnding()) return false;
    m_context.sendErrorReply(QDBusError::Failed, QStringLiteral("Lumora is ending."));
    return true;
}

} // namespace lumora
