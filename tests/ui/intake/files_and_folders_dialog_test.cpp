// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/files_and_folders_dialog.h"

#include "tests/app/wait_for.h"
#include "tests/support/temporary_directory.h"

#include <QAbstractItemView>
#include <QFile>
#include <QSignalSpy>

#include <gmock/gmock.h>

#include <fstream>

namespace lumora {
namespace {

class FilesAndFolders : public testing::Test
{
protected:
    FilesAndFolders()
    {
        std::filesystem::create_directory(m_folder / "album");
        std::ofstream(m_folder / "a b.png") << "x";
        std::ofstream(m_folder / "notes.txt") << "x";
        m_dialog.setDirectory(QString::fromStdString(m_folder.path().string()));
        m_dialog.show();
    }

    QAbstractItemView& list() { return *m_dialog.findChild<QAbstractItemView*>(QStringLiteral("listView")); }
    QStringList offered()
    {
        QStringList names;
        for (int row = 0; row < list().model()->rowCount(list().rootIndex()); ++row)
            names << list().model()->index(row, 0, list().rootIndex()).data().toString();
        return names;
    }
    void select(const QString& name)
    {
        const auto row = static_cast<int>(offered().indexOf(name));
        list().selectionModel()->select(list().model()->index(row, 0, list().rootIndex()),
                                        QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }

    test::TemporaryDirectory m_folder;
    FilesAndFoldersDialog m_dialog;
};

TEST_F(FilesAndFolders, OffersFoldersAndImagesOnly)
{
    ASSERT_TRUE(test::waitFor([this] { return offered().size() == 2; }));
    EXPECT_THAT(offered(), testing::UnorderedElementsAre(QStringLiteral("album"), QStringLiteral("a b.png")));
}

TEST_F(FilesAndFolders, ChoosesAFolderAndAFileTogether)
{
    ASSERT_TRUE(test::waitFor([this] { return offered().size() == 2; }));
    QSignalSpy chosen(&m_dialog, &QFileDialog::filesSelected);
    select(QStringLiteral("album"));
    select(QStringLiteral("a b.png"));
    m_dialog.accept();
    ASSERT_EQ(chosen.count(), 1);
    const QString folder = QString::fromStdString(m_folder.path().string());
    EXPECT_THAT(chosen[0][0].toStringList(),
                testing::UnorderedElementsAre(folder + QStringLiteral("/album"),
                                              folder + QStringLiteral("/a b.png")));
    EXPECT_FALSE(m_dialog.isVisible());
}

TEST_F(FilesAndFolders, ChoosesNothingWhenItIsCancelled)
{
    QSignalSpy chosen(&m_dialog, &QFileDialog::filesSelected);
    m_dialog.reject();
    EXPECT_EQ(chosen.count(), 0);
}

} // namespace
} // namespace lumora
