// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The roads that files take into the drop window.
#include "system/file_uris.h"
#include "tests/ui/open_drop_window.h"

#include <QClipboard>
#include <QDragEnterEvent>
#include <QGuiApplication>
#include <QMimeData>
#include <QTest>

#include <gmock/gmock.h>

#include <fstream>

namespace lumora {
namespace {

using std::filesystem::path;
using test::waitFor;

class DropWindowIntake : public testing::Test, protected test::OpenDropWindow
{
protected:
    static std::unique_ptr<QMimeData> files(const std::vector<path>& paths)
    {
        auto data = std::make_unique<QMimeData>();
        QByteArray list;
        for (const path& file : paths)
            list += QByteArray::fromStdString(fileUri(file) + "\r\n");
        data->setData(QStringLiteral("text/uri-list"), list);
        return data;
    }
    bool drag(const QMimeData& data)
    {
        QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        enter.ignore();
        QCoreApplication::sendEvent(&zone(), &enter);
        return enter.isAccepted();
    }
    bool drop(const QMimeData& data)
    {
        drag(data);
        QDropEvent event(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
        event.ignore();
        QCoreApplication::sendEvent(&zone(), &event);
        return event.isAccepted();
    }
    path makeFile(const char* name)
    {
        const path file = objects.folder / name;
        std::ofstream(file) << "x";
        return file;
    }
    // What the model was given to expand by its next batch.
    std::vector<path> nextBatch()
    {
        EXPECT_TRUE(waitFor([this] {
            const std::lock_guard lock(objects.mutex);
            return !objects.expanded.empty();
        }));
        const std::lock_guard lock(objects.mutex);
        return objects.expanded.empty() ? std::vector<path>{} : objects.expanded.back();
    }
};

TEST_F(DropWindowIntake, HandsADropOfNothingUsableOnAsAnEmptyList)
{
    EXPECT_TRUE(drop(*files({makeFile("notes.txt"), objects.folder / "gone"})));
    EXPECT_TRUE(waitForStatus("No supported image files found"));
    EXPECT_TRUE(objects.expanded.empty());
}

TEST_F(DropWindowIntake, HandsAFolderOnUnchanged)
{
    drop(*files({objects.folder.path()}));
    EXPECT_THAT(nextBatch(), testing::ElementsAre(objects.folder.path()));
}

TEST_F(DropWindowIntake, HandsOneDropOnAsOneBatchWithoutWhatIsNoImage)
{
    const path first = makeFile("a b#%.png");
    const path second = makeFile("\xE9\xFF.jpg");
    drop(*files({first, makeFile("notes.txt"), second}));
    EXPECT_THAT(nextBatch(), testing::ElementsAre(first, second));
}

TEST_F(DropWindowIntake, TakesNothingFromRemoteAddresses)
{
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), "https://example.invalid/a.png\r\n");
    EXPECT_FALSE(drag(data));
    EXPECT_FALSE(zone().isTargeted());
}

TEST_F(DropWindowIntake, TakesTheListWhereThePortalHasNoFilesForTheDrop)
{
    const path file = makeFile("a.png");
    const auto data = files({file});
    data->setData(QStringLiteral("application/vnd.portal.filetransfer"), "unknown key");
    drop(*data);
    EXPECT_THAT(nextBatch(), testing::ElementsAre(file));
}

TEST_F(DropWindowIntake, BearsAnAnnouncedListThatIsEmpty)
{
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), "");
    data.setUrls({});
    drop(data);
    QMimeData comment;
    comment.setData(QStringLiteral("text/uri-list"), "# nothing yet\r\n");
    EXPECT_TRUE(drop(comment));
    EXPECT_TRUE(waitForStatus("No supported image files found"));
}

TEST_F(DropWindowIntake, RefusesADragOfText)
{
    QMimeData data;
    data.setText(QStringLiteral("/photos/a.png"));
    EXPECT_FALSE(drag(data));
}

TEST_F(DropWindowIntake, IsTargetedWhileADragHovers)
{
    const auto data = files({"/photos/a.png"});
    EXPECT_TRUE(drag(*data));
    EXPECT_TRUE(zone().isTargeted());
    QDragLeaveEvent leave;
    QCoreApplication::sendEvent(&zone(), &leave);
    EXPECT_FALSE(zone().isTargeted());
    drop(*data);
    EXPECT_FALSE(zone().isTargeted());
}

TEST_F(DropWindowIntake, OpensTheChooserByMouseSpaceAndReturn)
{
    objects.chosen = {makeFile("a.png"), makeFile("notes.txt")};
    const std::function<void()> roads[] = {[this] { QTest::mouseClick(&zone(), Qt::LeftButton); },
                                           [this] { QTest::keyClick(&zone(), Qt::Key_Space); },
                                           [this] { QTest::keyClick(&zone(), Qt::Key_Return); }};
    for (const auto& road : roads) {
        const int before = objects.model.resultCount();
        road();
        EXPECT_TRUE(waitFor([&] { return objects.model.resultCount() == before + 1; }));
        EXPECT_TRUE(waitForStatus("Done"));
    }
    EXPECT_THAT(nextBatch(), testing::ElementsAre(objects.chosen[0]));
}

TEST_F(DropWindowIntake, TakesCopiedFilesByPasting)
{
    const path file = makeFile("a.png");
    QGuiApplication::clipboard()->setMimeData(files({file}).release());
    QTest::keyClick(view.get(), Qt::Key_V, Qt::ControlModifier);
    EXPECT_THAT(nextBatch(), testing::ElementsAre(file));
}

TEST_F(DropWindowIntake, TakesFilesCopiedInTheFormOfSomeFileManagers)
{
    const path file = makeFile("a.png");
    auto* data = new QMimeData;
    data->setData(QStringLiteral("x-special/gnome-copied-files"),
                  QByteArray::fromStdString("copy\n" + fileUri(file)));
    QGuiApplication::clipboard()->setMimeData(data);
    view->paste();
    EXPECT_THAT(nextBatch(), testing::ElementsAre(file));
}

TEST_F(DropWindowIntake, IgnoresPastedText)
{
    QGuiApplication::clipboard()->setText(QStringLiteral("hello"));
    view->paste();
    EXPECT_EQ(objects.model.statusText(), QStringLiteral("Drop images here"));
}

TEST_F(DropWindowIntake, ShowsTheArrowsWhileABatchRunsAndStillTakesDrops)
{
    EXPECT_EQ(zone().iconName(), QStringLiteral("square.and.arrow.down"));
    objects.runUntil(1, 4);
    EXPECT_EQ(zone().iconName(), QStringLiteral("arrow.triangle.2.circlepath"));
    const path late = makeFile("late.png");
    drop(*files({late}));
    objects.letWorkersGo();
    EXPECT_TRUE(waitFor([&] { return objects.model.resultCount() == 5; }));
    EXPECT_EQ(objects.model.resultAt(0).sourceURL, late);
    EXPECT_TRUE(waitForStatus("Done"));
    EXPECT_EQ(zone().iconName(), QStringLiteral("square.and.arrow.down"));
}

} // namespace
} // namespace lumora
