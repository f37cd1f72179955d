// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/desktop_settings.h"

#include "ui/bus/bus_call.h"

#include <QDBusArgument>
#include <QDBusMetaType>
#include <QDBusPendingReply>
#include <QMap>
#include <QStringList>
#include <QVariantMap>

namespace lumora {
namespace {

const QString service = QStringLiteral("org.freedesktop.portal.Desktop");
const QString objectPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearance = QStringLiteral("org.freedesktop.appearance");
const QString desktopInterface = QStringLiteral("org.gnome.desktop.interface");
constexpr std::chrono::seconds replyTimeout(10);

using Settings = QMap<QString, QVariantMap>;

ColorScheme colorSchemeOf(uint value)
{
    return value == 1 ? ColorScheme::dark : value == 2 ? ColorScheme::light : ColorScheme::noPreference;
}

} // namespace

DesktopSettings::DesktopSettings(QDBusConnection bus, QObject* parent)
    : QObject(parent), m_bus(std::move(bus))
{
    qDBusRegisterMetaType<Settings>();
    // The connection below looks the slot's types up by name and knows nothing else to follow.
    qRegisterMetaType<QDBusVariant>();
    m_bus.connect(service, objectPath, interface, QStringLiteral("SettingChanged"), this,
                  SLOT(apply(QString, QString, QDBusVariant)));
    QDBusMessage call =
        QDBusMessage::createMethodCall(service, objectPath, interface, QStringLiteral("ReadAll"));
    call << QStringList{appearance, desktopInterface};
    callOnBus(m_bus, call, replyTimeout, this, [this](const QDBusPendingCall& answer) { applyAll(answer); });
}

void DesktopSettings::applyAll(const QDBusPendingCall& answer)
{
    const QDBusPendingReply<Settings> reply = answer;
    if (!reply.isValid()) return;
    const Settings settings = reply.value();
    for (auto space = settings.begin(); space != settings.end(); ++space) {
        for (auto value = space->begin(); value != space->end(); ++value)
            apply(space.key(), value.key(), QDBusVariant(value.value()));
    }
}

void DesktopSettings::apply(const QString& space, const QString& key, const QDBusVariant& value)
{
    const QVariant plain = value.variant();
    if (space == appearance && key == QLatin1String("color-scheme")) {
        m_colorScheme = colorSchemeOf(plain.toUInt());
    } else if (space == appearance && key == QLatin1String("reduced-motion")) {
        m_reducesMotion = plain.toUInt() == 1;
    } else if (space == desktopInterface && key == QLatin1String("enable-animations")) {
        m_enablesAnimations = plain.toBool();
    } else if (space == desktopInterface && key == QLatin1String("text-scaling-factor") &&
               plain.toDouble() > 0) {
        m_textScale = plain.toDouble();
    } else {
        return;
    }
    Q_EMIT changed();
}

} // namespace lumora
