// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A results list in a window of its own.
#pragma once

#include "tests/ui/drop_window_objects.h"
#include "ui/results/results_list.h"
#include "ui/results/results_list_view.h"
#include "ui/results/results_summary.h"

#include <QCoreApplication>
#include <QMenu>
#include <QVBoxLayout>

namespace lumora::test {

struct ResultsWindow
{
    ResultsWindow() : list(new ResultsList(objects.model, browser(), &window))
    {
        auto* stack = new QVBoxLayout(&window);
        stack->setContentsMargins(0, 0, 0, 0);
        stack->addWidget(list);
        stack->addStretch();
        window.resize(676, 700);
        window.show();
    }

    FileBrowser browser()
    {
        return {[this](const std::filesystem::path& file) { objects.shown.push_back(file); },
                [this](const std::filesystem::path& file) { objects.opened.push_back(file); }};
    }
    void addSuccesses(int count)
    {
        for (int i = 0; i < count; ++i)
            objects.addSuccess("/photos/" + std::to_string(i) + ".jpg", 2000, 1000, "Optimized");
        QCoreApplication::processEvents();
    }
    ResultsListView& view() { return *list->findChild<ResultsListView*>(); }
    QModelIndex row(int number) { return view().model()->index(number, 0); }
    QVariant at(int number, int role) { return row(number).data(role); }
    QStringList summary()
    {
        QStringList texts;
        for (const SummaryMetric* metric : list->findChildren<SummaryMetric*>())
            texts << metric->title() + u'=' + metric->value();
        return texts;
    }
    QAction* menuAction(int number, const char* text)
    {
        for (QAction* action : view().makeContextMenu(row(number))->actions()) {
            if (action->text() == QLatin1String(text)) return action;
        }
        return nullptr;
    }

    DropWindowObjects objects;
    QWidget window;
    ResultsList* list;
};

} // namespace lumora::test
