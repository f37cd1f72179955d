// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/portal_file_chooser.h"

#include "system/file_uris.h"
#include "types/format.h"
#include "ui/bus/bus_call.h"
#include "ui/intake/portal_request.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QPointer>

namespace lumora {

// One entry of the panel's list of kinds of files, as the portal wants it.
struct PortalPattern
{
    uint kind = 1; // a MIME type
    QString pattern;
};
struct PortalFilter
{
    QString name;
    QList<PortalPattern> patterns;
};

// NOLINTBEGIN(readability-identifier-naming): the bus' own names
QDBusArgument& operator<<(QDBusArgument& argument, const PortalPattern& pattern)
{
    argument.beginStructure();
    argument << pattern.kind << pattern.pattern;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalPattern& pattern)
{
    argument.beginStructure();
    argument >> pattern.kind >> pattern.pattern;
    argument.endStructure();
    return argument;
}
QDBusArgument& operator<<(QDBusArgument& argument, const PortalFilter& filter)
{
    argument.beginStructure();
    argument << filter.name << filter.patterns;
    argument.endStructure();
    return argument;
}
const QDBusArgument& operator>>(const QDBusArgument& argument, PortalFilter& filter)
{
    argument.beginStructure();
    argument >> filter.name >> filter.patterns;
    argument.endStructure();
    return argument;
}
// NOLINTEND(readability-identifier-naming)

namespace {

constexpr std::chrono::seconds patience(2);
constexpr std::chrono::seconds openingTimeout(25);

QDBusMessage portalCall(const char* interface, const char* method)
{
    return QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.portal.Desktop"),
                                          QStringLiteral("/org/freedesktop/portal/desktop"),
                                          QLatin1String(interface), QLatin1String(method));
}

QList<PortalFilter> imageFilters()
{
    PortalFilter images{QStringLiteral("Images"), {}};
    for (const Format* format : formats()) {
        for (const std::string_view type : format->mimeTypes)
            images.patterns.append(
                {1, QString::fromLatin1(type.data(), static_cast<qsizetype>(type.size()))});
    }
    return {images};
}

QVariantMap options(ChosenKind kind, const QString& token)
{
    qDBusRegisterMetaType<PortalPattern>();
    qDBusRegisterMetaType<QList<PortalPattern>>();
    qDBusRegisterMetaType<PortalFilter>();
    qDBusRegisterMetaType<QList<PortalFilter>>();
    QVariantMap made{{QStringLiteral("handle_token"), token}, {QStringLiteral("multiple"), true}};
    if (kind == ChosenKind::folders)
        made.insert(QStringLiteral("directory"), true);
    else
        made.insert(QStringLiteral("filters"), QVariant::fromValue(imageFilters()));
    return made;
}

std::vector<std::filesystem::path> chosenPaths(const QVariantMap& results)
{
    const QStringList uris = results.value(QStringLiteral("uris")).toStringList();
    return pathsOfUriList(uris.join(QStringLiteral("\r\n")).toStdString());
}

} // namespace

void findPortalChooser(const QDBusConnection& bus, QObject* context, std::function<void(bool found)> tell)
{
    QDBusMessage call = portalCall("org.freedesktop.DBus.Properties", "Get");
    call << QStringLiteral("org.freedesktop.portal.FileChooser") << QStringLiteral("version");
    callOnBus(bus, call, patience, context, [tell = std::move(tell)](const QDBusPendingCall& answer) {
        const QDBusPendingReply<QDBusVariant> reply = answer;
        tell(reply.isValid());
    });
}

void chooseInPortal(const QDBusConnection& bus, const QString& window, ChosenKind kind, QObject* context,
                    PortalChoice answer)
{
    auto* request = new PortalRequest(
        bus,
        [answer = std::move(answer)](const std::optional<QVariantMap>& results) {
            answer(results ? std::optional(chosenPaths(*results)) : std::nullopt);
        },
        context);
    const bool folders = kind == ChosenKind::folders;
    QDBusMessage call = portalCall("org.freedesktop.portal.FileChooser", "OpenFile");
    call << window << (folders ? QStringLiteral("Choose Folders") : QStringLiteral("Choose Images"))
         << options(kind, request->token());
    callOnBus(bus, call, openingTimeout, request, [request](const QDBusPendingCall& pending) {
        const QDBusPendingReply<QDBusObjectPath> reply = pending;
        request->begun(reply.isValid() ? std::optional(reply.value().path()) : std::nullopt);
    });
}

} // namespace lumora
