// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the user told the desktop and the toolkit does not know: less motion, light or dark, larger text. Read
// from the settings portal, which may be absent; it is asked once and followed, never waited for. Main
// thread.
#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>
#include <QString>

#include <optional>

class QDBusPendingCall;

namespace lumora {

enum class ColorScheme { noPreference = 0, dark = 1, light = 2 };

class DesktopSettings : public QObject
{
    Q_OBJECT

public:
    explicit DesktopSettings(QDBusConnection bus, QObject* parent = nullptr);

    bool reducesMotion() const { return m_reducesMotion || !m_enablesAnimations; }
    ColorScheme colorScheme() const { return m_colorScheme; }
    // 1 is the usual size; nothing where the desktop has said nothing, or not yet.
    std::optional<double> textScale() const { return m_textScale; }

Q_SIGNALS:
    void changed();

private Q_SLOTS:
    void apply(const QString& space, const QString& key, const QDBusVariant& value);

private:
    void applyAll(const QDBusPendingCall& answer);

    QDBusConnection m_bus;
    bool m_reducesMotion = false;
    bool m_enablesAnimations = true; // the older word for the same wish
    ColorScheme m_colorScheme = ColorScheme::noPreference;
    std::optional<double> m_textScale;
};

} // namespace lumora
