// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/files_and_folders_dialog.h"

#include "tests/app/wait_for.h"
#include "tests/support/temporary_directory.h"
#include "types/format.h"

#include <QAbstractItemView>
#include <QFile>
#include <QSignalSpy>
#include <QWidget>

#include <gmock/gmock.h>

#include <QLineEdit>

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

TEST_F(FilesAndFolders, OffersEveryFormatThatIsTakenInAndNoOther)
{
    QStringList images;
    for (const Format* format : formats()) {
        for (const std::string_view extension : format->extensions) {
            const std::string name = "a." + std::string(extension);
            std::ofstream(m_folder / "album" / name) << "x";
            images << QString::fromStdString(name);
        }
    }
    for (const char* name : {"a.pdf", "a.svg", "a.avif", "jpg"})
        std::ofstream(m_folder / "album" / name) << "x";
    m_dialog.setDirectory(QString::fromStdString((m_folder / "album").string()));
    ASSERT_TRUE(test::waitFor([&] { return offered().size() >= images.size(); }));
    EXPECT_THAT(offered(), testing::UnorderedElementsAreArray(images));
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

TEST_F(FilesAndFolders, LeavesTheFieldToWhoWritesInIt)
{
    ASSERT_TRUE(test::waitFor([this] { return offered().size() == 2; }));
    auto* field = m_dialog.findChild<QLineEdit*>();
    m_dialog.activateWindow();
    field->setFocus();
    ASSERT_TRUE(test::waitFor([&] { return field->hasFocus(); }));
    field->setText(QStringLiteral("/ho"));
    select(QStringLiteral("album"));
    EXPECT_EQ(field->text(), QStringLiteral("/ho"));
}

TEST_F(FilesAndFolders, EntersAFolderThatIsTyped)
{
    ASSERT_TRUE(test::waitFor([this] { return offered().size() == 2; }));
    QSignalSpy chosen(&m_dialog, &QFileDialog::filesSelected);
    auto* field = m_dialog.findChild<QLineEdit*>();
    m_dialog.activateWindow();
    field->setFocus();
    ASSERT_TRUE(test::waitFor([&] { return field->hasFocus(); }));
    field->setText(QString::fromStdString((m_folder / "album").string()));
    m_dialog.accept();
    EXPECT_EQ(m_dialog.directory().dirName(), QStringLiteral("album"));
    EXPECT_EQ(field->text(), QString());
    EXPECT_EQ(chosen.count(), 0);
    EXPECT_TRUE(m_dialog.isVisible());
}

TEST(FilesAndFoldersAtFirst, OffersNoFolderThatIsNotThereAsAName)
{
    const FilesAndFoldersDialog dialog;
    EXPECT_EQ(dialog.findChild<QLineEdit*>()->text(), QString());
    EXPECT_TRUE(dialog.directory().exists());
}

// Opens the panel as the drop window does; what it answers is kept.
class ChooseFilesAndFolders : public testing::Test
{
protected:
    ChooseFilesAndFolders()
    {
        chooseFilesAndFolders(&m_parent, [this](const auto& files) { m_chosen.push_back(files); });
    }
    FilesAndFoldersDialog& dialog() { return *m_parent.findChild<FilesAndFoldersDialog*>(); }
    bool isGone()
    {
        return test::waitFor([this] { return !m_parent.findChild<FilesAndFoldersDialog*>(); });
    }

    test::TemporaryDirectory m_folder;
    QWidget m_parent;
    std::vector<std::vector<std::filesystem::path>> m_chosen;
};

TEST_F(ChooseFilesAndFolders, AnswersWithThePathsOnce)
{
    const std::filesystem::path file = m_folder / "\xC3\xA9 b.png";
    std::ofstream(file) << "x";
    dialog().selectFile(QFile::decodeName(file.c_str()));
    dialog().accept();
    EXPECT_THAT(m_chosen, testing::ElementsAre(testing::ElementsAre(file)));
    EXPECT_TRUE(isGone());
}

TEST_F(ChooseFilesAndFolders, AnswersNothingWhenItIsCancelled)
{
    dialog().reject();
    EXPECT_TRUE(isGone());
    EXPECT_THAT(m_chosen, testing::IsEmpty());
}

} // namespace
} // namespace lumora
