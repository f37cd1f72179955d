// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/x11.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>

namespace lumora::x11 {
namespace {

struct Free
{
    void operator()(void* reply) const { std::free(reply); }
};

template <class Reply>
using Answer = std::unique_ptr<Reply, Free>;

} // namespace

xcb_connection_t* connection()
{
    const auto* native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return native ? native->connection() : nullptr;
}

int screenNumber()
{
    // The number stands at the end of "host:display.screen" and is 0 where it is left out.
    const QByteArray display = qgetenv("DISPLAY");
    const qsizetype dot = display.indexOf('.', display.lastIndexOf(':'));
    return dot < 0 ? 0 : display.mid(dot + 1).toInt();
}

xcb_window_t rootWindow(xcb_connection_t* connection)
{
    xcb_screen_iterator_t screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    for (int i = screenNumber(); i > 0 && screens.rem > 1; --i)
        xcb_screen_next(&screens);
    return screens.data->root;
}

xcb_atom_t atom(xcb_connection_t* connection, std::string_view name)
{
    const auto cookie = xcb_intern_atom(connection, false, static_cast<uint16_t>(name.size()), name.data());
    const Answer<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(connection, cookie, nullptr));
    return answer ? answer->atom : xcb_atom_t(XCB_ATOM_NONE);
}

xcb_window_t selectionOwner(xcb_connection_t* connection, xcb_atom_t selection)
{
    const auto cookie = xcb_get_selection_owner(connection, selection);
    const Answer<xcb_get_selection_owner_reply_t> answer(
        xcb_get_selection_owner_reply(connection, cookie, nullptr));
    return answer ? answer->owner : xcb_window_t(XCB_WINDOW_NONE);
}

void selectEvents(xcb_connection_t* connection, xcb_window_t window, uint32_t events)
{
    const auto cookie = xcb_get_window_attributes(connection, window);
    const Answer<xcb_get_window_attributes_reply_t> answer(
        xcb_get_window_attributes_reply(connection, cookie, nullptr));
    if (!answer) return;
    const uint32_t all = answer->your_event_mask | events;
    xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &all);
    xcb_flush(connection);
}

QByteArray property(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t property)
{
    constexpr uint32_t manyItems = 1024;
    const auto cookie =
        xcb_get_property(connection, false, window, property, XCB_GET_PROPERTY_TYPE_ANY, 0, manyItems);
    const Answer<xcb_get_property_reply_t> answer(xcb_get_property_reply(connection, cookie, nullptr));
    if (!answer || answer->format != 32) return {};
    return QByteArray(static_cast<const char*>(xcb_get_property_value(answer.get())),
                      xcb_get_property_value_length(answer.get()));
}

QPoint positionOnRoot(xcb_connection_t* connection, xcb_window_t window)
{
    const auto cookie = xcb_translate_coordinates(connection, window, rootWindow(connection), 0, 0);
    const Answer<xcb_translate_coordinates_reply_t> answer(
        xcb_translate_coordinates_reply(connection, cookie, nullptr));
    return answer ? QPoint(answer->dst_x, answer->dst_y) : QPoint();
}

} // namespace lumora::x11
