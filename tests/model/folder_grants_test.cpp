// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/model/model_harness.h"

namespace lumora {
namespace {

using test::ModelTest;
using ::testing::ElementsAre;

class FolderGrants : public ModelTest
{
protected:
    std::vector<std::string> m_asked;
    std::string m_refused;

    void SetUp() override
    {
        m_services.requestSaveAccess = [this](const auto& folder) -> std::optional<std::filesystem::path> {
            m_asked.push_back(folder.filename().string());
            if (folder.filename() == m_refused) return std::nullopt;
            return folder;
        };
    }
    std::vector<std::filesystem::path> filesOfThreeFolders()
    {
        std::vector<std::filesystem::path> made;
        for (int i = 0; i < 50; ++i)
            made.push_back(m_directory / ("f" + std::to_string(i % 3)) / (std::to_string(i) + ".png"));
        return made;
    }
};

TEST_F(FolderGrants, EachFolderIsAskedForOnceARunInOrderOfAppearance)
{
    for (int run = 0; run < 2; ++run) {
        drop(filesOfThreeFolders());
        ASSERT_TRUE(waitUntilDone());
        EXPECT_THAT(m_asked, ElementsAre("f0", "f1", "f2"));
    }
    EXPECT_EQ(model().resultCount(), 100);
}

TEST_F(FolderGrants, ARefusalEndsTheBatchAndEarlierGrantsStay)
{
    bool completed = false;
    m_refused = "f1";
    model().setOnComplete([&] { completed = true; });
    drop(filesOfThreeFolders());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_EQ(model().statusText(), QStringLiteral("Save permission needed"));
    EXPECT_TRUE(completed);
    EXPECT_TRUE(m_gate.started().empty());

    m_refused.clear();
    drop(filesOfThreeFolders());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_THAT(m_asked, ElementsAre("f0", "f1", "f1", "f2"));
}

TEST_F(FolderGrants, ASelectedFolderNeedsNone)
{
    m_settings.destinationMode = DestinationMode::selectedFolder;
    drop(filesOfThreeFolders());
    ASSERT_TRUE(waitUntilDone());
    EXPECT_TRUE(m_asked.empty());
    EXPECT_EQ(model().resultCount(), 50);
}

TEST_F(FolderGrants, OnlyASandboxAsks)
{
    const SaveAccessRequest refusing = [](const auto&) { return std::nullopt; };
    const auto marker = file("flatpak-info");
    EXPECT_EQ(saveAccessRequest(refusing, marker)("/a/b"), "/a/b");
    test::writeFile(marker, "");
    EXPECT_EQ(saveAccessRequest(refusing, marker)("/a/b"), std::nullopt);
}

TEST_F(FolderGrants, ThePanelNamesTheFolder)
{
    EXPECT_EQ(saveAccessMessage("/a/My photos"), "Allow Lumora to save converted images in My photos.");
    EXPECT_EQ(saveAccessMessage("/"), "Allow Lumora to save converted images in /.");
}

} // namespace
} // namespace lumora
