// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/system_tray.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <string>

namespace lumora {
namespace {

constexpr uint32_t requestDock = 0;
constexpr uint32_t xembedVersion = 0;
constexpr uint32_t xembedMapped = 1; // the tray maps the window once it is inside
constexpr uint32_t xembedEmbeddedNotify = 0;

} // namespace

SystemTray::SystemTray(QObject* parent) : QObject(parent), m_connection(x11::connection())
{
    if (!m_connection) return;
    m_selection = x11::atom(m_connection, "_NET_SYSTEM_TRAY_S" + std::to_string(x11::screenNumber()));
    m_manager = x11::atom(m_connection, "MANAGER");
    m_xembed = x11::atom(m_connection, "_XEMBED");
    QCoreApplication::instance()->installNativeEventFilter(this);
    // A new tray says so on the root window.
    x11::selectEvents(m_connection, x11::rootWindow(m_connection), XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    findOwner();
}

SystemTray::~SystemTray()
{
    if (m_connection) QCoreApplication::instance()->removeNativeEventFilter(this);
}

void SystemTray::dock(WId window)
{
    m_docking = static_cast<xcb_window_t>(window);
    const std::array<uint32_t, 2> info{xembedVersion, xembedMapped};
    const xcb_atom_t infoAtom = x11::atom(m_connection, "_XEMBED_INFO");
    xcb_change_property(m_connection, XCB_PROP_MODE_REPLACE, m_docking, infoAtom, infoAtom, 32, info.size(),
                        info.data());
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = m_owner;
    request.type = x11::atom(m_connection, "_NET_SYSTEM_TRAY_OPCODE");
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = m_docking;
    xcb_send_event(m_connection, false, m_owner, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(m_connection);
}

QColor SystemTray::symbolColor() const
{
    if (!isPresent()) return {};
    // Four colours of three components each, 0 to 65535; the first one is that of normal symbols.
    const QByteArray bytes =
        x11::property(m_connection, m_owner, x11::atom(m_connection, "_NET_SYSTEM_TRAY_COLORS"));
    std::array<uint32_t, 3> components{};
    if (bytes.size() < qsizetype(sizeof components)) return {};
    std::copy_n(bytes.constData(), sizeof components, reinterpret_cast<char*>(components.data()));
    const auto part = [](uint32_t value) { return static_cast<float>(std::min(value, 65535U)) / 65535.0F; };
    return QColor::fromRgbF(part(components[0]), part(components[1]), part(components[2]));
}

void SystemTray::findOwner()
{
    // An owner may vanish before its end is watched; then the one after it counts.
    do {
        m_owner = x11::selectionOwner(m_connection, m_selection);
        if (isPresent()) x11::selectEvents(m_connection, m_owner, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    } while (m_owner != x11::selectionOwner(m_connection, m_selection));
}

bool SystemTray::nativeEventFilter(const QByteArray& type, void* message, qintptr*)
{
    if (type != "xcb_generic_event_t") return false;
    const auto* event = static_cast<const xcb_generic_event_t*>(message);
    switch (event->response_type & 0x7F) {
    case XCB_CLIENT_MESSAGE:
        handleClientMessage(*reinterpret_cast<const xcb_client_message_event_t*>(event));
        break;
    case XCB_DESTROY_NOTIFY:
        if (isPresent() && reinterpret_cast<const xcb_destroy_notify_event_t*>(event)->window == m_owner) {
            findOwner();
            QMetaObject::invokeMethod(this, &SystemTray::changed, Qt::QueuedConnection);
        }
        break;
    case XCB_REPARENT_NOTIFY: {
        const auto& reparent = *reinterpret_cast<const xcb_reparent_notify_event_t*>(event);
        const bool inside = reparent.parent != x11::rootWindow(m_connection);
        if (m_docking != XCB_WINDOW_NONE && reparent.window == m_docking && inside) announceDocked();
        break;
    }
    default:
        break;
    }
    return false;
}

void SystemTray::handleClientMessage(const xcb_client_message_event_t& event)
{
    if (event.type == m_manager && event.data.data32[1] == m_selection) {
        // It may have been found before it said so; what has docked in it since does not leave it again.
        const xcb_window_t known = m_owner;
        findOwner();
        if (m_owner != known) QMetaObject::invokeMethod(this, &SystemTray::changed, Qt::QueuedConnection);
    } else if (event.type == m_xembed && event.data.data32[1] == xembedEmbeddedNotify &&
               m_docking != XCB_WINDOW_NONE && event.window == m_docking) {
        announceDocked();
    }
}

void SystemTray::announceDocked()
{
    m_docking = XCB_WINDOW_NONE;
    QMetaObject::invokeMethod(this, &SystemTray::docked, Qt::QueuedConnection);
}

} // namespace lumora
