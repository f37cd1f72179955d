// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/status_item.h"

#include "app/desktop/desktop_settings.h"
#include "ui/theme/tidewell_theme.h"

#include <QCursor>
#include <QMenu>

namespace lumora {

StatusItem::StatusItem(StatusItemActions actions, FileIntake& intake, const DesktopSettings& settings,
                       const QDBusConnection& bus, QObject* parent)
    : QObject(parent), m_actions(std::move(actions)), m_intake(intake), m_settings(settings),
      m_notifierHost(bus)
{
    connect(&m_tray, &SystemTray::changed, this, [this] {
        // A view inside a tray that went is left on the root window; a fresh one docks anew.
        m_view.reset();
        update();
    });
    connect(&m_tray, &SystemTray::docked, this, [this] {
        if (m_view) m_view->show();
    });
    connect(&m_notifierHost, &NotifierHost::present, this, [this] {
        m_hasNotifierHost = true;
        update();
    });
    connect(&settings, &DesktopSettings::changed, this, &StatusItem::updateColors);
    update();
}

StatusItem::~StatusItem() = default;

void StatusItem::update()
{
    if (m_tray.isPresent()) {
        m_icon.reset();
        if (!m_view) dockView();
    } else if (m_hasNotifierHost && !m_icon) {
        showIcon();
    }
    updateColors();
}

void StatusItem::dockView()
{
    m_view = std::make_unique<DropStatusItemView>(m_actions, m_intake);
    m_view->resize(m_view->sizeHint());
    m_tray.dock(m_view->winId());
}

void StatusItem::showIcon()
{
    m_iconMenu = makeStatusMenu(m_actions);
    m_icon = std::make_unique<QSystemTrayIcon>();
    m_icon->setToolTip(QStringLiteral("Lumora"));
    m_icon->setContextMenu(m_iconMenu.get());
    // Hosts open the menu on a right click only.
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (reason == QSystemTrayIcon::Trigger) m_iconMenu->popup(QCursor::pos());
            });
    updateColors();
    m_icon->show();
}

void StatusItem::updateColors()
{
    const bool light = m_settings.colorScheme() == ColorScheme::light;
    const QColor usual = light ? TidewellTheme::ink() : TidewellTheme::cream();
    const QColor tray = m_tray.symbolColor();
    if (m_view) m_view->setSymbolColor(tray.isValid() ? tray : usual);
    if (m_icon) m_icon->setIcon(statusSymbol().icon(usual));
}

} // namespace lumora
