// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A comparison of files that lie in a folder of the test's own, read in this process.
#pragma once

#include "system/file_services.h"
#include "tests/ui/drop_window_objects.h"
#include "ui/comparison/comparison_view.h"
#include "ui/results/results_list_model.h"

#include <QCoreApplication>

#include <filesystem>

namespace lumora::test {

struct ComparisonWindow
{
    using Path = std::filesystem::path;

    ComparisonWindow() { view.resize(1000, 720); }

    const Path& folder() const { return objects.folder.path(); }
    ComparisonCanvas& canvas() { return *view.findChild<ComparisonCanvas*>(); }
    QModelIndex row(int number) const { return list.index(number); }

    // The newest result.
    void add(const Path& source, const std::optional<Path>& output)
    {
        objects.add({source, output, fileSize(source), output ? fileSize(*output) : 0,
                     output ? "Optimized" : "no", output.has_value()});
    }
    // Until all is shown that there is to show.
    bool compare(int number = 0)
    {
        view.show();
        QCoreApplication::processEvents();
        view.compare(list, row(number));
        return waitUntilComplete();
    }
    bool waitUntilComplete()
    {
        return waitFor([this] { return view.isComplete(); });
    }

    DropWindowObjects objects;
    ResultsListModel list{objects.model};
    ComparisonView view{LUMORA_WORKER};
};

} // namespace lumora::test
