// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/branded_window_accessible.h"

#include "app/window/branded_window.h"

#include <QAccessibleWidget>

namespace lumora {
namespace {

QAccessibleInterface* windowInterface(const QString&, QObject* object)
{
    auto* window = qobject_cast<BrandedWindow*>(object);
    return window ? new QAccessibleWidget(window, QAccessible::Window) : nullptr;
}

} // namespace

void exposeBrandedWindows()
{
    QAccessible::installFactory(windowInterface);
}

} // namespace lumora
