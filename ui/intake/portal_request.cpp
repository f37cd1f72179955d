// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/portal_request.h"

#include <utility>

namespace lumora {
namespace {

QString nextToken()
{
    static int count = 0;
    return QStringLiteral("lumora%1").arg(++count);
}

// The sender's name without its colon, dots as underscores.
QString expectedHandle(const QDBusConnection& bus, const QString& token)
{
    return QStringLiteral("/org/freedesktop/portal/desktop/request/%1/%2")
        .arg(bus.baseService().mid(1).replace(u'.', u'_'), token);
}

} // namespace

PortalRequest::PortalRequest(QDBusConnection bus, Answer answer, QObject* parent)
    : QObject(parent), m_bus(std::move(bus)), m_answer(std::move(answer)), m_token(nextToken())
{
    // Before the call: the answer could overtake its reply.
    listen(expectedHandle(m_bus, m_token));
}

void PortalRequest::listen(const QString& handle)
{
    m_handle = handle;
    m_bus.connect(QStringLiteral("org.freedesktop.portal.Desktop"), handle,
                  QStringLiteral("org.freedesktop.portal.Request"), QStringLiteral("Response"), this,
                  SLOT(response(uint, QVariantMap)));
}

void PortalRequest::begun(const std::optional<QString>& handle)
{
    if (!handle) return end(std::nullopt);
    if (*handle != m_handle) listen(*handle);
}

void PortalRequest::response(uint code, const QVariantMap& results)
{
    constexpr uint agreed = 0;
    end(code == agreed ? results : QVariantMap());
}

void PortalRequest::end(const std::optional<QVariantMap>& results)
{
    if (const Answer answer = std::exchange(m_answer, nullptr)) answer(results);
    deleteLater();
}

} // namespace lumora
