// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropwindow/destination_hint.h"

#include "model/folder_bookmark.h"
#include "tests/ui/open_drop_window.h"
#include "ui/settings/destination_text.h"

#include <QAccessible>
#include <QDir>
#include <QTest>

#include <gtest/gtest.h>

namespace lumora {
namespace {

class DestinationHintTest : public testing::Test, protected test::OpenDropWindow
{
protected:
    DestinationHint& hint() { return part<DestinationHint>(); }
    std::string shown() { return hint().text().toStdString(); }
    void choose(const std::filesystem::path& folder)
    {
        objects.settings.destinationMode.set(DestinationMode::selectedFolder);
        objects.settings.destinationFolderBookmark.set(*folderBookmark(folder));
    }
};

TEST_F(DestinationHintTest, SaysWhereOutputsGoAndWhatBecomesOfTheOriginals)
{
    EXPECT_EQ(shown(), "Next to the originals, originals kept");
    objects.settings.moveOriginalToTrash.set(true);
    EXPECT_EQ(shown(), "Next to the originals, originals to the Trash");
    choose(objects.folder.path());
    EXPECT_EQ(shown(), "Into " + objects.folder.path().string() + ", originals to the Trash");
}

TEST_F(DestinationHintTest, SaysThatNoFolderIsChosenOrThatItIsGone)
{
    objects.settings.destinationMode.set(DestinationMode::selectedFolder);
    EXPECT_EQ(shown(), "No folder chosen yet, originals kept");
    const std::filesystem::path folder = objects.folder / "web";
    std::filesystem::create_directory(folder);
    choose(folder);
    EXPECT_EQ(shown(), "Into " + folder.string() + ", originals kept");
    std::filesystem::remove(folder);
    QEvent back(QEvent::WindowActivate);
    QCoreApplication::sendEvent(&hint(), &back);
    EXPECT_EQ(shown(), folder.string() + " is gone, originals kept");
}

TEST_F(DestinationHintTest, OpensThePreferencesByPointerAndByKey)
{
    QTest::mouseClick(&hint(), Qt::LeftButton);
    EXPECT_EQ(objects.preferencesOpened, 1);
    QTest::keyClick(&hint(), Qt::Key_Space);
    EXPECT_EQ(objects.preferencesOpened, 2);
}

TEST_F(DestinationHintTest, StaysInsideTheHeaderHoweverLongTheFolderIs)
{
    const std::filesystem::path folder = objects.folder / std::string(200, 'w');
    std::filesystem::create_directory(folder);
    choose(folder);
    view->resize(720, 320);
    QCoreApplication::processEvents();
    EXPECT_LE(placeOf(hint()).right(), 720 - 22 - 30);
    EXPECT_GT(hint().width(), 200);
}

TEST(FolderText, BeginsWithATildeBelowTheHome)
{
    const std::filesystem::path home = QDir::homePath().toStdString();
    EXPECT_EQ(folderText(home / "Web").toStdString(), "~/Web");
    EXPECT_EQ(folderText(home).toStdString(), "~");
    EXPECT_EQ(folderText(home.string() + "2").toStdString(), home.string() + "2");
}

} // namespace
} // namespace lumora
