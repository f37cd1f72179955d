// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/instance/hand_over.h"

#include "app/instance/application_id.h"
#include "system/file_uris.h"

#include <QDBusMessage>
#include <QVariantMap>

namespace lumora {
namespace {

// A session bus takes far larger messages, but the receiver decodes each in one go on its main thread.
constexpr qsizetype bytesPerCall = qsizetype{256} * 1024;

// The leave to raise a window that the launching desktop gave to this process.
QVariantMap platformData()
{
    QVariantMap data;
    const auto pass = [&data](const char* variable, const char* key) {
        const QString value = qEnvironmentVariable(variable);
        if (!value.isEmpty()) data.insert(QLatin1String(key), value);
    };
    pass("XDG_ACTIVATION_TOKEN", "activation-token");
    pass("DESKTOP_STARTUP_ID", "desktop-startup-id");
    return data;
}

QDBusMessage applicationCall(const char* method)
{
    return QDBusMessage::createMethodCall(applicationId, applicationObjectPath,
                                          QStringLiteral("org.freedesktop.Application"),
                                          QLatin1String(method));
}

// The URIs of the first files, as many as one call carries.
QStringList nextUris(const std::vector<std::filesystem::path>& files)
{
    QStringList uris;
    qsizetype bytes = 0;
    for (const auto& file : files) {
        uris.append(QString::fromStdString(fileUri(file)));
        bytes += uris.last().size();
        if (bytes >= bytesPerCall) break;
    }
    return uris;
}

} // namespace

HandOver::HandOver(QDBusConnection bus, std::chrono::milliseconds replyTimeout)
    : m_bus(std::move(bus)), m_replyTimeout(replyTimeout)
{
}

bool HandOver::deliver(LaunchRequest& request) const
{
    const bool onlyActivates = request.files.empty() && !request.preferences;
    if (onlyActivates) return acknowledged(applicationCall("Activate") << platformData());
    if (!deliverFiles(request)) return false;
    if (!request.preferences) return true;
    QDBusMessage call = applicationCall("ActivateAction");
    call << QStringLiteral("preferences") << QVariantList() << platformData();
    return acknowledged(call);
}

bool HandOver::deliverFiles(LaunchRequest& request) const
{
    while (!request.files.empty()) {
        const QStringList uris = nextUris(request.files);
        if (!acknowledged(applicationCall("Open") << uris << platformData())) return false;
        request.files.erase(request.files.begin(), request.files.begin() + uris.size());
    }
    return true;
}

bool HandOver::acknowledged(const QDBusMessage& message) const
{
    QDBusMessage call = message;
    // A name that is being given up must lead back to this process, not to another start by the bus.
    call.setAutoStartService(false);
    return m_bus.call(call, QDBus::Block, static_cast<int>(m_replyTimeout.count())).type() ==
           QDBusMessage::ReplyMessage;
}

} // namespace lumora
