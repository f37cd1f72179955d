// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/file_input_resolver.h"

#include "tests/support/files.h"
#include "tests/support/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lumora {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using Paths = std::vector<std::filesystem::path>;

// Permissions do not bind the superuser: steps down for a while.
class OrdinaryUser
{
public:
    OrdinaryUser() : m_before(geteuid())
    {
        if (m_before == 0 && seteuid(65534) != 0) throw std::runtime_error("cannot step down");
    }
    ~OrdinaryUser()
    {
        if (seteuid(m_before) != 0) std::abort();
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    uid_t m_before;
};

class FileInputResolverTest : public testing::Test
{
protected:
    // Makes the file with its folders; returns its path.
    std::filesystem::path file(const std::filesystem::path& name) const
    {
        std::filesystem::create_directories((m_root / name).parent_path());
        test::writeFile(m_root / name, "");
        return m_root / name;
    }

    static Paths resolve(const Paths& dropped) { return FileInputResolver::imageURLs(dropped); }

    const test::TemporaryDirectory m_root;
};

TEST_F(FileInputResolverTest, KeepsTheOrderOfTheDrop)
{
    const Paths dropped{file("b.png"), file("a.png"), file("c.png")};
    EXPECT_EQ(resolve(dropped), dropped);
}

TEST_F(FileInputResolverTest, FindsImagesAtEveryDepthAndNothingElse)
{
    const Paths images{file("album/a.png"), file("album/sub/b.JPG"), file("album/sub/deep/c.webp")};
    file("album/notes.txt");
    file("album/sub/README");
    EXPECT_THAT(resolve({m_root / "album"}), testing::UnorderedElementsAreArray(images));
}

TEST_F(FileInputResolverTest, ReturnsAFileOfADroppedFolderOnceWhereItWasMetFirst)
{
    const auto inside = file("album/a.png");
    const auto other = file("z.png");
    EXPECT_THAT(resolve({m_root / "album", other, inside}), ElementsAre(inside, other));
    EXPECT_THAT(resolve({inside, other, m_root / "album"}), ElementsAre(inside, other));
}

TEST_F(FileInputResolverTest, ReturnsTheSamePathOnceAsItWasDroppedFirst)
{
    const auto plain = file("b/p.png");
    const auto detour = m_root / "b/../b/p.png";
    EXPECT_EQ(resolve({detour, plain}), Paths{detour});
    EXPECT_EQ(resolve({plain, detour}), Paths{plain});
    EXPECT_EQ(resolve({m_root / "b/./", plain}), Paths{m_root / "b/./p.png"});
}

TEST_F(FileInputResolverTest, CountsTwoLinksToOneFileAsTwo)
{
    const auto image = file("a.png");
    std::filesystem::create_symlink("a.png", m_root / "b.png");
    std::filesystem::create_symlink("a.png", m_root / "c.png");
    EXPECT_THAT(resolve({m_root.path()}), UnorderedElementsAre(image, m_root / "b.png", m_root / "c.png"));
}

TEST_F(FileInputResolverTest, TakesADroppedFolderNamedLikeAnImageAsOneImage)
{
    file("album.jpg/inside.png");
    EXPECT_THAT(resolve({m_root / "album.jpg"}), ElementsAre(m_root / "album.jpg"));
}

TEST_F(FileInputResolverTest, ListsAndEntersAFolderNamedLikeAnImageInsideAWalk)
{
    const auto inside = file("root/album.jpg/inside.png");
    EXPECT_THAT(resolve({m_root / "root"}), ElementsAre(m_root / "root/album.jpg", inside));
}

TEST_F(FileInputResolverTest, LeavesHiddenEntriesOfAWalkOutWithAllBeneath)
{
    file("album/.p.png");
    file("album/.hidden/q.png");
    const auto visible = file("album/r.png");
    EXPECT_THAT(resolve({m_root / "album"}), ElementsAre(visible));
}

TEST_F(FileInputResolverTest, TakesHiddenItemsThatAreDroppedThemselves)
{
    const auto hiddenFile = file(".p.png");
    const auto inHiddenFolder = file(".hidden/q.png");
    EXPECT_THAT(resolve({hiddenFile, m_root / ".hidden"}), ElementsAre(hiddenFile, inHiddenFolder));
}

TEST_F(FileInputResolverTest, DoesNotEnterPackagesOfAWalk)
{
    const std::filesystem::path album("album");
    for (const char* mark :
         {"Tool.app/Contents/Info.plist", "Core.Framework/Resources/Info.plist", "y.PLUGIN/Info.plist",
          "My Photos.photoslibrary/database/Photos.sqlite", "Old.aplibrary/Database/apdb/Library.apdb"}) {
        file(album / mark);
        file(album / *std::filesystem::path(mark).begin() / "Masters/inside.png");
    }
    const auto outside = file("album/application/Info.plist").parent_path() / "inside.png";
    file(outside.lexically_relative(m_root.path()));
    EXPECT_THAT(resolve({m_root / "album"}), ElementsAre(outside));
}

TEST_F(FileInputResolverTest, EntersFoldersThatAreOnlyCalledLikePackages)
{
    const Paths images{file("album/shop.app/a.png"), file("album/talk.key/b.png"),
                       file("album/home.pages/c.png"), file("album/2024.photoslibrary/d.png"),
                       file("album/x.framework/Contents/e.png")};
    EXPECT_THAT(resolve({m_root / "album"}), testing::UnorderedElementsAreArray(images));
}

TEST_F(FileInputResolverTest, FindsNothingInOtherDrops)
{
    EXPECT_THAT(resolve({file("notes.txt"), m_root / "missing", "", "/dev/null"}), IsEmpty());
    EXPECT_THAT(resolve({}), IsEmpty());
}

TEST_F(FileInputResolverTest, ReturnsAMissingFileWithASupportedExtension)
{
    EXPECT_THAT(resolve({m_root / "missing.png"}), ElementsAre(m_root / "missing.png"));
}

TEST_F(FileInputResolverTest, WalksADroppedLinkToAFolder)
{
    file("album/a.png");
    std::filesystem::create_directory_symlink("album", m_root / "link");
    EXPECT_THAT(resolve({m_root / "link"}), ElementsAre(m_root / "link/a.png"));
}

TEST_F(FileInputResolverTest, DoesNotFollowLinksToFoldersSoThatLoopsEnd)
{
    const auto image = file("album/a.png");
    file("elsewhere/b.png");
    std::filesystem::create_directory_symlink("..", m_root / "album/loop");
    std::filesystem::create_directory_symlink(".", m_root / "album/self");
    std::filesystem::create_directory_symlink("../elsewhere", m_root / "album/other");
    std::filesystem::create_symlink("me", m_root / "album/me");
    EXPECT_THAT(resolve({m_root / "album"}), ElementsAre(image));
}

TEST_F(FileInputResolverTest, PassesOverAFolderThatCannotBeReadAndTellsOfIt)
{
    const auto image = file("album/a.png");
    file("album/locked/b.png");
    std::filesystem::permissions(m_root.path(), std::filesystem::perms(0755));
    std::filesystem::permissions(m_root / "album/locked", std::filesystem::perms::none);
    Paths found;
    std::vector<FileInputResolver::UnreadFolder> unread;
    {
        const OrdinaryUser user;
        found = FileInputResolver::imagesAndUnread({m_root / "album"}, {}, unread);
    }
    std::filesystem::permissions(m_root / "album/locked", std::filesystem::perms::owner_all);
    EXPECT_THAT(found, ElementsAre(image));
    ASSERT_EQ(unread.size(), 1U);
    EXPECT_EQ(unread.front().path, m_root / "album/locked");
    EXPECT_EQ(unread.front().reason, EACCES);
}

TEST_F(FileInputResolverTest, KeepsNamesThatAreNotText)
{
    const Paths images{file("album/\xFF\xC3\x28.png"), file("album/new\nline \"'.jpg"), file("album/-f.gif")};
    EXPECT_THAT(resolve({m_root / "album"}), testing::UnorderedElementsAreArray(images));
}

// Deeper than any path that the system opens in one call; what lies beyond is passed over.
TEST_F(FileInputResolverTest, SurvivesATreeDeeperThanAnyPath)
{
    const auto image = file("album/a.png");
    int folder = ::open((m_root / "album").c_str(), O_RDONLY | O_DIRECTORY);
    for (int depth = 0; depth < 6000; ++depth) {
        ASSERT_EQ(::mkdirat(folder, "d", 0700), 0);
        const int next = ::openat(folder, "d", O_RDONLY | O_DIRECTORY);
        ::close(folder);
        folder = next;
    }
    ::close(folder);
    EXPECT_THAT(resolve({m_root / "album"}), ElementsAre(image));
    ASSERT_EQ(std::system(("rm -rf '" + (m_root / "album").native() + "'").c_str()), 0);
}

TEST_F(FileInputResolverTest, EndsEarlyWhenStopped)
{
    const auto image = file("album/a.png");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_THAT(FileInputResolver::imageURLs({m_root / "album", image}, stop.get_token()), IsEmpty());
}

TEST_F(FileInputResolverTest, KnowsFoldersThroughLinks)
{
    std::filesystem::create_directory_symlink(".", m_root / "link");
    std::filesystem::create_symlink("nowhere", m_root / "dangling");
    EXPECT_TRUE(FileInputResolver::isDirectory(m_root.path()));
    EXPECT_TRUE(FileInputResolver::isDirectory(m_root / "link"));
    EXPECT_FALSE(FileInputResolver::isDirectory(m_root / "dangling"));
    EXPECT_FALSE(FileInputResolver::isDirectory(file("a.png")));
    EXPECT_FALSE(FileInputResolver::isDirectory(m_root / "missing"));
}

} // namespace
} // namespace lumora
