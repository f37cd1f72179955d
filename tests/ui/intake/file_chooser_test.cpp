// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/file_chooser.h"

#include "tests/app/fake_file_chooser.h"
#include "tests/app/private_bus.h"
#include "tests/app/wait_for.h"

#include <QMenu>
#include <QPointer>

#include <gmock/gmock.h>

namespace lumora {
namespace {

using std::filesystem::path;

class FileChooserTest : public testing::Test
{
protected:
    FileChooserTest() { m_parent.show(); }

    void open()
    {
        m_chooser.open(&m_parent, [this](const auto& files) { m_chosen.push_back(files); });
    }
    QMenu* menu() { return m_parent.findChild<QMenu*>(); }
    FilesAndFoldersDialog* ownPanel() { return m_parent.findChild<FilesAndFoldersDialog*>(); }
    void chooseKind(const char* text)
    {
        open();
        ASSERT_TRUE(test::waitFor([this] { return menu() && menu()->isVisible(); }));
        for (QAction* action : menu()->actions()) {
            if (action->text() == QLatin1String(text)) action->trigger();
        }
        delete menu();
    }

    test::PrivateBus m_bus;
    QWidget m_parent;
    FileChooser m_chooser{m_bus.connect()};
    std::vector<std::vector<path>> m_chosen;
};

TEST_F(FileChooserTest, ChoosesImagesInThePortalsPanel)
{
    test::FakeFileChooser portal(m_bus.connect());
    portal.uris = {QStringLiteral("file:///photos/a%20b.png"), QStringLiteral("file:///photos/%C3%A9.jpg")};
    chooseKind("Choose Images...");
    ASSERT_TRUE(test::waitFor([this] { return !m_chosen.empty(); }));
    EXPECT_THAT(m_chosen, testing::ElementsAre(std::vector<path>{"/photos/a b.png", "/photos/\xC3\xA9.jpg"}));
    EXPECT_EQ(portal.title, QStringLiteral("Choose Images"));
    EXPECT_TRUE(portal.options.value(QStringLiteral("multiple")).toBool());
    EXPECT_FALSE(portal.options.contains(QStringLiteral("directory")));
    EXPECT_TRUE(portal.options.contains(QStringLiteral("filters")));
}

TEST_F(FileChooserTest, ChoosesFoldersByTheSecondEntry)
{
    test::FakeFileChooser portal(m_bus.connect());
    portal.uris = {QStringLiteral("file:///photos")};
    portal.choosesItsOwnHandle = true;
    portal.waits = true;
    chooseKind("Choose Folders...");
    ASSERT_TRUE(test::waitFor([&] { return !portal.title.isEmpty(); }));
    EXPECT_TRUE(portal.options.value(QStringLiteral("directory")).toBool());
    // Until the reply has told the handle, nobody listens there.
    ASSERT_TRUE(test::waitFor([&] {
        portal.answer();
        return !m_chosen.empty();
    }));
    EXPECT_THAT(m_chosen, testing::ElementsAre(std::vector<path>{"/photos"}));
}

TEST_F(FileChooserTest, AnswersNothingWhenThePortalsPanelIsCancelled)
{
    test::FakeFileChooser portal(m_bus.connect());
    portal.code = 1;
    chooseKind("Choose Images...");
    ASSERT_TRUE(test::waitFor([&] { return !portal.title.isEmpty(); }));
    portal.title.clear();
    portal.code = 0;
    portal.uris = {QStringLiteral("file:///b.png")};
    chooseKind("Choose Images...");
    ASSERT_TRUE(test::waitFor([this] { return !m_chosen.empty(); }));
    EXPECT_THAT(m_chosen, testing::ElementsAre(std::vector<path>{"/b.png"}));
    EXPECT_EQ(ownPanel(), nullptr);
}

TEST_F(FileChooserTest, OpensItsOwnPanelWithoutAPortalOrWhereThePortalCannot)
{
    open();
    ASSERT_TRUE(test::waitFor([this] { return ownPanel() && ownPanel()->isVisible(); }));
    EXPECT_EQ(menu(), nullptr);
    delete ownPanel();
    test::FakeFileChooser portal(m_bus.connect());
    portal.refuses = true;
    chooseKind("Choose Images...");
    ASSERT_TRUE(test::waitFor([this] { return ownPanel() && ownPanel()->isVisible(); }));
    EXPECT_TRUE(m_chosen.empty());
}

} // namespace
} // namespace lumora
