// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/file_intake.h"

#include "tests/app/fake_file_transfer.h"
#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"
#include "tests/support/temporary_directory.h"

#include <QCoreApplication>
#include <QMimeData>

#include <gmock/gmock.h>

#include <memory>

namespace lumora {
namespace {

using testing::ElementsAre;
using Paths = FileIntake::Paths;

class FileIntakeTest : public testing::Test
{
protected:
    FileIntake::Take keep()
    {
        return [this](const Paths& files) { m_taken.push_back(files); };
    }
    void waitForAll()
    {
        EXPECT_TRUE(test::waitFor([this] { return !m_intake->isLoading(); }));
    }

    test::TemporaryDirectory m_folder;
    test::PrivateBus m_bus;
    std::unique_ptr<FileIntake> m_intake = std::make_unique<FileIntake>(m_bus.connect());
    std::vector<Paths> m_taken;
};

TEST_F(FileIntakeTest, LeavesOutWhatCanBeNoImageAndKeepsTheOrder)
{
    m_intake->load({"/b.png", "/notes.txt", m_folder.path(), "/a.JPG", "/b.png"}, keep());
    waitForAll();
    EXPECT_THAT(m_taken, ElementsAre(Paths{"/b.png", m_folder.path(), "/a.JPG", "/b.png"}));
}

TEST_F(FileIntakeTest, HandsListsOnInTheOrderInWhichTheyCame)
{
    std::vector<Paths> lists;
    for (int i = 0; i < 100; ++i) {
        // Folders in the first ones: they take the longest.
        lists.emplace_back(i < 10 ? 500 : 0, m_folder.path());
        lists.back().push_back("/" + std::to_string(i) + ".png");
        m_intake->load(lists.back(), keep());
    }
    waitForAll();
    EXPECT_EQ(m_taken, lists);
}

TEST_F(FileIntakeTest, HandsOnWhatThePortalKeepsInPlaceOfTheList)
{
    const test::FakeFileTransfer portal(m_bus.connect(), {QStringLiteral("/run/doc/a.png")});
    QMimeData data;
    data.setData(QStringLiteral("text/uri-list"), "file:///b.png\r\n");
    data.setData(QStringLiteral("application/vnd.portal.filetransfer"), "key");
    m_intake->load(data, keep());
    EXPECT_TRUE(m_intake->isLoading());
    waitForAll();
    EXPECT_THAT(m_taken, ElementsAre(Paths{"/run/doc/a.png"}));
}

TEST_F(FileIntakeTest, SaysWhenTheLastLoadHasEnded)
{
    std::vector<std::size_t> takenThen;
    QObject::connect(m_intake.get(), &FileIntake::idle, [&] { takenThen.push_back(m_taken.size()); });
    m_intake->load({"/a.png"}, keep());
    m_intake->load({"/notes.txt"}, keep());
    waitForAll();
    EXPECT_THAT(m_taken, ElementsAre(Paths{"/a.png"}, Paths{}));
    EXPECT_THAT(takenThen, ElementsAre(2));
}

TEST_F(FileIntakeTest, CallsNobodyOnceItIsGone)
{
    m_intake->load({"/a.png"}, keep());
    m_intake.reset();
    QCoreApplication::processEvents();
    EXPECT_TRUE(m_taken.empty());
}

} // namespace
} // namespace lumora
