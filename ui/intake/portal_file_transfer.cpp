// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/portal_file_transfer.h"

#include "ui/bus/bus_call.h"

#include <QDBusPendingReply>
#include <QMimeData>

#include <array>

namespace lumora {
namespace {

// The second is the name that the first releases of the portal's clients used.
constexpr std::array transferTypes{"application/vnd.portal.filetransfer", "application/vnd.portal.files"};
constexpr std::chrono::seconds replyTimeout(10);

QDBusMessage retrieveFilesCall(const QString& key)
{
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Documents"),
                                                       QStringLiteral("/org/freedesktop/portal/documents"),
                                                       QStringLiteral("org.freedesktop.portal.FileTransfer"),
                                                       QStringLiteral("RetrieveFiles"));
    call << key << QVariantMap{};
    return call;
}

std::vector<std::filesystem::path> pathsOf(const QStringList& names)
{
    std::vector<std::filesystem::path> paths;
    for (const QString& name : names)
        paths.emplace_back(name.toStdString());
    return paths;
}

} // namespace

QString portalTransferKey(const QMimeData& data)
{
    for (const char* type : transferTypes) {
        // Senders count the NUL of a C string in.
        const QByteArray key = data.data(QLatin1String(type));
        if (!key.isEmpty()) return QString::fromUtf8(key.constData());
    }
    return {};
}

void retrievePortalFiles(const QDBusConnection& bus, const QString& key, QObject* context,
                         PortalAnswer answer)
{
    callOnBus(bus, retrieveFilesCall(key), replyTimeout, context,
              [answer = std::move(answer)](const QDBusPendingCall& call) {
                  const QDBusPendingReply<QStringList> reply = call;
                  answer(reply.isValid() ? std::optional(pathsOf(reply.value())) : std::nullopt);
              });
}

} // namespace lumora
