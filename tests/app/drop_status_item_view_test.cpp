// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/tray/drop_status_item_view.h"

#include "system/file_uris.h"
#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"
#include "wait_for.h"

#include <QApplication>
#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>

#include <gtest/gtest.h>

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
        QApplication::sendEvent(&m_view, &event);
        return event.isAccepted() && event.dropAction() == Qt::CopyAction;
    }
    void leave()
    {
        QDragLeaveEvent event;
        QApplication::sendEvent(&m_view, &event);
    }
    bool drop()
    {
        QDropEvent event(QPointF(5, 5), Qt::CopyAction | Qt::MoveAction, &m_data, Qt::LeftButton,
                         Qt::NoModifier);
        QApplication::sendEvent(&m_view, &event);
        return event.isAccepted();
    }
    // The texts of the menu that a click opens; a separator has none.
    QStringList click(Qt::MouseButton button)
    {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(5, 5), QPointF(5, 5), button, button,
                          Qt::NoModifier);
        QApplication::sendEvent(&m_view, &event);
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
    DropStatusItemView m_view{{[this] { ++m_opened; }, [this] { ++m_preferences; },
                               [this](const Files& files) { m_processed = files; }}};
};

TEST_F(DropStatusItemViewTest, ATextFileNeitherHighlightsNorDrops)
{
    drag({"/a/readme.txt"});
    EXPECT_FALSE(enter());
    EXPECT_FALSE(m_view.isHighlighted());
    EXPECT_FALSE(drop());
    EXPECT_TRUE(m_processed.empty());
}

TEST_F(DropStatusItemViewTest, OfAMixtureOnlyTheImagesAreHandedOnInOrder)
{
    drag({"/a/x.png", "/a/readme.txt", "/a/\xE9.JPG"});
    EXPECT_TRUE(enter());
    EXPECT_TRUE(m_view.isHighlighted());
    EXPECT_TRUE(drop());
    EXPECT_EQ(m_processed, (Files{"/a/x.png", "/a/\xE9.JPG"}));
    EXPECT_FALSE(m_view.isHighlighted());
}

TEST_F(DropStatusItemViewTest, AFolderIsHandedOnAsItself)
{
    drag({m_folder.path()});
    EXPECT_TRUE(enter());
    EXPECT_TRUE(drop());
    EXPECT_EQ(m_processed, Files{m_folder.path()});
}

TEST_F(DropStatusItemViewTest, ADragThatLeavesTakesTheHighlightAlong)
{
    drag({"/a/x.png"});
    enter();
    leave();
    EXPECT_FALSE(m_view.isHighlighted());
}

TEST_F(DropStatusItemViewTest, TheHighlightGoesAlsoWhenTheDropIsRefused)
{
    drag({"/a/x.png"});
    enter();
    m_data.setData(QStringLiteral("text/uri-list"), {});
    EXPECT_FALSE(drop());
    EXPECT_FALSE(m_view.isHighlighted());
}

TEST_F(DropStatusItemViewTest, BothClicksOpenTheSameFiveEntries)
{
    const QStringList entries{QStringLiteral("Open Drop Window"), QStringLiteral("Preferences..."),
                              QStringLiteral("Tidewell Website"), QString(), QStringLiteral("Quit Lumora")};
    m_view.show();
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
    EXPECT_EQ(m_view.sizeHint().width(), 30);
    EXPECT_EQ(m_view.toolTip(), QStringLiteral("Lumora"));
}

} // namespace
