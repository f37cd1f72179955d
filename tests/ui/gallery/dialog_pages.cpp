// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/temporary_directory.h"
#include "tests/ui/gallery/gallery.h"
#include "ui/intake/files_and_folders_dialog.h"

#include <QAbstractItemView>
#include <QTest>

#include <fstream>

namespace lumora::gallery {

void dialogPages(const Gallery& gallery)
{
    test::TemporaryDirectory folder;
    std::filesystem::create_directory(folder / "album");
    for (const char* name : {"beach.jpg", "logo.png", "scan.tiff"})
        std::ofstream(folder / name) << "x";
    FilesAndFoldersDialog dialog;
    dialog.setDirectory(QString::fromStdString(folder.path().string()));
    dialog.show();
    const auto* list = dialog.findChild<QAbstractItemView*>(QStringLiteral("listView"));
    if (!QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 4; })) return;
    list->selectionModel()->select(list->model()->index(1, 0, list->rootIndex()),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    gallery.save(dialog, QStringLiteral("chooser"));
}

} // namespace lumora::gallery
