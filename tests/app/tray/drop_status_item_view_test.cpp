// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/drop_status_item_view.h"

#include "system/file_uris.h"
#include "tests/app/fake_file_transfer.h"
#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"
#include "tests/support/temporary_directory.h"
#include "ui/intake/file_intake.h"
#include "ui/theme/fonts.h"

#include <QApplication>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QThreadPool>

#include <gtest/gtest.h>

#include <semaphore>

using namespace lumora;
using Files = std::vector<std::filesystem::path>;

namespace {

class DropStatusItemViewTest : public testing::Test
{
protected:
    void drag(const Files& files)
    {
        QByteArray list;
        for (const auto& file : files)
            list += QByteArray::fromStdString(fileUri(file) + "\r\n");
        m_data.setData(QStringLiteral("text/uri-list"), list);
    }
    bool enter()
    {
        QDragEnterEvent event(QPoint(5, 5), Qt::CopyAction | Qt::MoveAction, &m_data, Qt::LeftButton,
                              Qt::NoModifier);
        QApplication::sendEvent(m_view.get(), &event);
        return event.isAccepted() && event.dropAction() == Qt::CopyAction;
    }
    void leave()
    {
        QDragLeaveEvent event;
        QApplication::sendEvent(m_view.get(), &event);
    }
    bool drop()
    {
        QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &m_data, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(m_view.get(), &event);
        return event.isAccepted();
    }
    // What the drops so far were handed on as.
    const Files& processed()
    {
        EXPECT_TRUE(test::waitFor([this] { return !m_intake.isLoading(); }));
        return m_processed;
    }
    // The texts of the menu that a click opens; a separator has none.
    QStringList click(Qt::MouseButton button)
    {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), button, button,
                          Qt::NoModifier);
        QApplication::sendEvent(m_view.get(), &event);
        QStringList texts;
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        if (!menu) return texts;
        for (const QAction* action : menu->actions())
            texts.append(action->text());
        menu->close();
        return texts;
    }

    test::TemporaryDirectory m_folder;
    QMimeData m_data;
    Files m_processed;
    int m_opened = 0;
    int m_preferences = 0;
    test::PrivateBus m_bus;
    FileIntake m_intake{m_bus.connect()};
    std::unique_ptr<DropStatusItemView> m_view = std::make_unique<DropStatusItemView>(
        StatusItemActions{[this] { ++m_opened; }, [this] { ++m_preferences; },
                          [this](const Files& files) { m_processed = files; }},
        m_intake);
};

TEST_F(DropStatusItemViewTest, ATextFileNeitherHighlightsNorDrops)
{
    drag({"/a/readme.txt"});
    EXPECT_FALSE(enter());
    EXPECT_FALSE(m_view->isHighlighted());
    EXPECT_FALSE(drop());
    EXPECT_TRUE(processed().empty());
}

TEST_F(DropStatusItemViewTest, OfAMixtureOnlyTheImagesAreHandedOnInOrder)
{
    drag({"/a/x.png", "/a/readme.txt", "/a/\xE9.JPG"});
    EXPECT_TRUE(enter());
    EXPECT_TRUE(m_view->isHighlighted());
    EXPECT_TRUE(drop());
    EXPECT_EQ(processed(), (Files{"/a/x.png", "/a/\xE9.JPG"}));
    EXPECT_FALSE(m_view->isHighlighted());
}

TEST_F(DropStatusItemViewTest, AFolderIsHandedOnAsItself)
{
    drag({m_folder.path()});
    EXPECT_TRUE(enter());
    EXPECT_TRUE(drop());
    EXPECT_EQ(processed(), Files{m_folder.path()});
}

TEST_F(DropStatusItemViewTest, AFolderNamedLikeAFileIsToldFromOne)
{
    const auto folder = m_folder / "readme.txt";
    std::filesystem::create_directory(folder);
    drag({folder});
    EXPECT_TRUE(enter());
    EXPECT_TRUE(drop());
    EXPECT_EQ(processed(), Files{folder});
}

TEST_F(DropStatusItemViewTest, FilesOfASandboxAreFetchedFromThePortal)
{
    const test::FakeFileTransfer portal(
        m_bus.connect(), {QStringLiteral("/run/doc/b.png"), QStringLiteral("/run/doc/readme.txt")});
    m_data.setData(QStringLiteral("application/vnd.portal.filetransfer"), "key");
    EXPECT_TRUE(enter());
    EXPECT_TRUE(drop());
    EXPECT_EQ(processed(), Files{"/run/doc/b.png"});
    EXPECT_EQ(portal.key, QStringLiteral("key"));
}

// No thread is left to look at the folder, as when others wait for a network share that sleeps.
TEST_F(DropStatusItemViewTest, ADiskThatDoesNotAnswerDoesNotHoldTheDrag)
{
    auto& pool = *QThreadPool::globalInstance();
    std::counting_semaphore<> awake(0);
    for (int i = 0; i < pool.maxThreadCount(); ++i)
        pool.start([&awake] { awake.acquire(); });
    drag({m_folder.path()});
    EXPECT_TRUE(enter());
    EXPECT_TRUE(drop());
    awake.release(pool.maxThreadCount());
    EXPECT_EQ(processed(), Files{m_folder.path()});
    pool.waitForDone();
}

TEST_F(DropStatusItemViewTest, ADropOutlivesTheViewThatATrayTakesAlong)
{
    drag({"/a/x.png"});
    EXPECT_TRUE(enter());
    EXPECT_TRUE(drop());
    m_view.reset();
    EXPECT_EQ(processed(), Files{"/a/x.png"});
}

TEST_F(DropStatusItemViewTest, ADragThatLeavesTakesTheHighlightAlong)
{
    drag({"/a/x.png"});
    enter();
    leave();
    EXPECT_FALSE(m_view->isHighlighted());
}

TEST_F(DropStatusItemViewTest, TheHighlightGoesAlsoWhenTheDropIsRefused)
{
    drag({"/a/x.png"});
    enter();
    m_data.setData(QStringLiteral("text/uri-list"), {});
    EXPECT_FALSE(drop());
    EXPECT_FALSE(m_view->isHighlighted());
}

TEST_F(DropStatusItemViewTest, BothClicksOpenTheSameFiveEntries)
{
    const QStringList entries{QStringLiteral("Open Drop Window"), QStringLiteral("Preferences..."),
                              QStringLiteral("Tidewell Website"), QString(), QStringLiteral("Quit Lumora")};
    m_view->show();
    EXPECT_EQ(click(Qt::LeftButton), entries);
    EXPECT_EQ(click(Qt::RightButton), entries);
    EXPECT_EQ(m_opened, 0);
}

TEST_F(DropStatusItemViewTest, TheEntriesDoWhatTheySay)
{
    const auto menu =
        makeStatusMenu({[this] { ++m_opened; }, [this] { ++m_preferences; }, [](const Files&) {}});
    menu->actions().at(0)->trigger();
    menu->actions().at(1)->trigger();
    EXPECT_EQ(m_opened, 1);
    EXPECT_EQ(m_preferences, 1);
}

TEST_F(DropStatusItemViewTest, ItIsThirtyWideAndSaysItsName)
{
    EXPECT_EQ(m_view->sizeHint().width(), 30);
    EXPECT_EQ(m_view->toolTip(), QStringLiteral("Lumora"));
}

TEST_F(DropStatusItemViewTest, ShowsItsWholeSymbolHoweverLowTheTrayIs)
{
    m_view->setSymbolColor(Qt::red);
    for (const double textScale : {1.0, 1.5}) {
        fonts::install(*qApp, textScale);
        for (const int height : {22, 16, 12}) {
            m_view->setMinimumSize(0, 0);
            m_view->resize(30, height);
            QImage image(m_view->size() * 2, QImage::Format_ARGB32_Premultiplied);
            image.setDevicePixelRatio(2);
            image.fill(Qt::transparent);
            m_view->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
            int top = image.height();
            int bottom = -1;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    if (qAlpha(image.pixel(x, y)) < 64) continue;
                    top = std::min(top, y);
                    bottom = std::max(bottom, y);
                }
            }
            EXPECT_GE(top, 2) << height;
            EXPECT_LE(bottom, image.height() - 3) << height;
            EXPECT_GT(bottom - top, height / 2) << height;
        }
    }
    fonts::install(*qApp, 1);
}

} // namespace
