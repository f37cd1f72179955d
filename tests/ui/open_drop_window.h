// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A drop window as it opens, with fake work behind it.
#pragma once

#include "tests/ui/drop_window_objects.h"
#include "ui/dropzone/drop_zone.h"

#include <QCoreApplication>

namespace lumora::test {

struct OpenDropWindow
{
    OpenDropWindow() : view(objects.makeView())
    {
        view->resize(820, 360);
        view->show();
        QCoreApplication::processEvents();
    }

    template <class Part>
    Part& part()
    {
        return *view->findChild<Part*>();
    }
    DropZone& zone() { return part<DropZone>(); }
    QRect placeOf(const QWidget& widget) { return {widget.mapTo(view.get(), QPoint()), widget.size()}; }

    bool waitForStatus(const char* text)
    {
        return waitFor([&] { return objects.model.statusText() == QLatin1String(text); });
    }

    DropWindowObjects objects;
    std::unique_ptr<DropWindowView> view;
};

} // namespace lumora::test
