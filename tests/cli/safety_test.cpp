// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is replaced, left alone and kept apart.
#include "tests/cli/cli_fixture.h"
#include "tests/support/program_output.h"

namespace lumora::cli::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class CliSafety : public CliTest
{
protected:
    // The names of what lies in the Trash.
    std::vector<std::string> trashed() const
    {
        std::vector<std::string> names;
        const fs::path files = home() / "data" / "Trash" / "files";
        if (!fs::exists(files)) return names;
        for (const auto& entry : fs::directory_iterator(files))
            names.push_back(entry.path().filename());
        std::ranges::sort(names);
        return names;
    }
    // So small that no output of a higher quality is smaller.
    fs::path smallPhotograph()
    {
        photograph("a.jpg");
        EXPECT_EQ(runInto({"--no-history", "-f", "jpeg", "-q", "30", "a.jpg"}).status, 0);
        fs::remove(in("a.jpg"));
        fs::rename(out("a.jpg"), in("small.jpg"));
        return in("small.jpg");
    }
    fs::path inTrash(const std::string& name) const { return home() / "data" / "Trash" / "files" / name; }
};

TEST_F(CliSafety, aStrangersFileGoesToTheTrashAndComesBack)
{
    photograph("a.jpg");
    writeFile(out("a.webp"), "a stranger's");
    const Outcome outcome = runInto({"a.jpg"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.complaints, "");
    EXPECT_THAT(trashed(), ElementsAre("a.webp"));
    EXPECT_EQ(readFile(inTrash("a.webp")), "a stranger's");
    EXPECT_THAT(readFile(home() / "data/Trash/info/a.webp.trashinfo"),
                HasSubstr("Path=" + out("a.webp").string()));
    EXPECT_EQ(run({"undo"}).status, 0);
    EXPECT_EQ(readFile(out("a.webp")), "a stranger's");
}

TEST_F(CliSafety, ourOwnOutputIsReplacedWithoutATrace)
{
    photograph("a.jpg");
    ASSERT_EQ(runInto({"a.jpg"}).status, 0);
    ASSERT_EQ(runInto({"-q", "20", "a.jpg"}).status, 0);
    EXPECT_THAT(trashed(), IsEmpty());
    writeFile(out("a.webp"), "edited since");
    ASSERT_EQ(runInto({"a.jpg"}).status, 0);
    EXPECT_THAT(trashed(), ElementsAre("a.webp"));
}

TEST_F(CliSafety, replacedFilesOfOneNameAreKeptApart)
{
    photograph("a.jpg");
    for (const char* content : {"first", "second"}) {
        writeFile(out("a.webp"), content);
        ASSERT_EQ(runInto({"a.jpg"}).status, 0);
    }
    EXPECT_EQ(readFile(inTrash("a.webp")), "first");
    EXPECT_EQ(readFile(inTrash("a.2.webp")), "second");
}

TEST_F(CliSafety, replacedFilesAreGoneWhereThatIsWanted)
{
    photograph("a.jpg");
    writeFile(out("a.webp"), "a stranger's");
    EXPECT_EQ(runInto({"--no-trash-replaced", "a.jpg"}).status, 0);
    EXPECT_THAT(trashed(), IsEmpty());
}

TEST_F(CliSafety, filesAreReplacedAllTheSameWhereThereIsNoTrash)
{
    photograph("a.jpg");
    writeFile(out("a.webp"), "a stranger's");
    fs::create_directory(home() / "data");
    writeFile(home() / "data" / "Trash", "in the way of the folder");
    EXPECT_EQ(runInto({"a.jpg"}).status, 0);
    EXPECT_NE(readFile(out("a.webp")), "a stranger's");
}

TEST_F(CliSafety, aFailedFileLeavesTheOldOutputInItsPlaceOnly)
{
    writeFile(in("a.jpg"), "no picture");
    writeFile(out("a.webp"), "a stranger's");
    EXPECT_EQ(runInto({"a.jpg"}).status, 1);
    EXPECT_EQ(readFile(out("a.webp")), "a stranger's");
    EXPECT_THAT(trashed(), IsEmpty());
}

TEST_F(CliSafety, whatWasOptimizedIsLeftAloneWhereThatIsWanted)
{
    photograph("a.jpg");
    ASSERT_EQ(run({"a.jpg"}).status, 0);
    fs::rename(in("a.webp"), in("moved.webp"));
    const Outcome foreseen = runInto({"--skip-optimized", "--dry-run", "moved.webp"});
    EXPECT_THAT(foreseen.results, HasSubstr("moved.webp: Already optimized."));
    const Outcome outcome = runInto({"--skip-optimized", "--json", "moved.webp"});
    EXPECT_EQ(outcome.status, 0);
    ASSERT_THAT(outcome.objects(), SizeIs(1));
    EXPECT_EQ(outcome.objects()[0].at("message"), "Already optimized.");
    EXPECT_TRUE(outcome.objects()[0].at("output").is_null());
    EXPECT_EQ(runInto({"--skip-optimized", "--quiet", "moved.webp"}).results, "");
    EXPECT_THAT(outputs(), IsEmpty());
    // A changed one is an image like others, and so is an original.
    photograph("moved.webp", 200, 100);
    EXPECT_EQ(runInto({"--skip-optimized", "moved.webp", "a.jpg"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("a.webp", "moved.webp"));
    EXPECT_EQ(runInto({"moved.webp"}).status, 0);
}

TEST_F(CliSafety, aFolderThatIsOptimizedAgainKeepsItsNumberOfFiles)
{
    fs::create_directory(in("album"));
    photograph("album/a.jpg");
    for (int time = 0; time < 3; ++time) {
        const Outcome outcome = run({"--skip-optimized", "--json", "album"});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.objects(), SizeIs(time == 0 ? 1 : 2));
        EXPECT_TRUE(fs::exists(in("album/a.webp")));
        EXPECT_FALSE(fs::exists(in("album/a 2.webp")));
        EXPECT_THAT(trashed(), IsEmpty());
    }
}

TEST_F(CliSafety, noLargerOutputIsWrittenWhereThatIsWanted)
{
    const fs::path small = smallPhotograph();
    const Outcome outcome = run({"--only-smaller", "-f", "jpeg", "-q", "95", "--json", "small.jpg"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.objects().at(0).at("message"), "Kept: the output would not be smaller.");
    EXPECT_EQ(std::distance(fs::directory_iterator(beside("in")), {}), 1);
    // One that has to be another size or another kind of file is written.
    EXPECT_EQ(
        runInto({"--only-smaller", "-f", "jpeg", "-q", "100", "--max-pixels", "319", "small.jpg"}).status, 0);
    EXPECT_EQ(runInto({"--only-smaller", "-f", "png", "small.jpg"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("small.jpg", "small.png"));
    EXPECT_GT(fs::file_size(out("small.png")), fs::file_size(in("small.jpg")));
}

TEST_F(CliSafety, theOriginalIsCopiedIntoAFolderWhereNoOutputIsSmaller)
{
    const fs::path small = smallPhotograph();
    lumora::test::writeTag(small, "Comment", "somebody");
    fs::permissions(small, fs::perms::owner_read | fs::perms::owner_write);
    const Outcome outcome = runInto({"--only-smaller", "-f", "jpeg", "-q", "95", "--json", "small.jpg"});
    EXPECT_EQ(outcome.status, 0);
    const auto row = outcome.objects().at(0);
    EXPECT_EQ(row.at("message"), "Copied: the output would not be smaller.");
    EXPECT_EQ(row.at("success"), true);
    EXPECT_EQ(row.at("output"), out("small.jpg").string());
    EXPECT_EQ(row.at("originalBytes"), fs::file_size(small));
    EXPECT_EQ(row.at("outputBytes"), fs::file_size(out("small.jpg")));
    EXPECT_EQ(fs::status(out("small.jpg")).permissions(), fs::status(small).permissions());
    EXPECT_THAT(readFile(out("small.jpg")), testing::Not(HasSubstr("somebody")));
    const auto pixels = [](const fs::path& file) {
        return lumora::test::outputOf("identify -format '%wx%h %#' '" + file.string() + "'");
    };
    EXPECT_NE(pixels(small), "");
    EXPECT_EQ(pixels(out("small.jpg")), pixels(small));

    ASSERT_EQ(
        runInto({"--only-smaller", "-f", "jpeg", "-q", "95", "--no-remove-metadata", "small.jpg"}).status, 0);
    EXPECT_EQ(readFile(out("small.jpg")), readFile(small));
    EXPECT_EQ(run({"undo"}).status, 0);
    EXPECT_THAT(outputs(), IsEmpty());
}

// What was only copied waits to be optimized.
TEST_F(CliSafety, anOriginalIsNoOutputBecauseItWasCopied)
{
    smallPhotograph();
    ASSERT_EQ(runInto({"--only-smaller", "-f", "jpeg", "-q", "95", "small.jpg"}).status, 0);
    ASSERT_EQ(readFile(out("small.jpg")), readFile(in("small.jpg")));
    EXPECT_EQ(runInto({"--skip-optimized", "small.jpg"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("small.jpg", "small.webp"));
}

TEST_F(CliSafety, aSmallerOutputIsWrittenAsAlways)
{
    photograph("a.jpg");
    EXPECT_EQ(runInto({"--only-smaller", "-f", "jpeg", "-q", "30", "a.jpg"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("a.jpg"));
}

TEST_F(CliSafety, foldersAreKeptWhereThatIsWanted)
{
    fs::create_directories(in("album/2025/may"));
    fs::rename(photograph("top.jpg"), in("album/top.jpg"));
    fs::rename(photograph("x.jpg"), in("album/2025/a.jpg"));
    fs::rename(photograph("y.jpg"), in("album/2025/may/a.jpg"));
    photograph("alone.jpg");
    const Outcome foreseen = runInto({"--keep-folders", "--dry-run", "album"});
    EXPECT_THAT(foreseen.results, HasSubstr((out("2025/may/a.webp")).string()));
    EXPECT_THAT(outputs(), IsEmpty());
    EXPECT_EQ(runInto({"--keep-folders", "album", "alone.jpg"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("2025", "alone.webp", "top.webp"));
    EXPECT_TRUE(fs::exists(out("2025/a.webp")));
    EXPECT_TRUE(fs::exists(out("2025/may/a.webp")));
}

TEST_F(CliSafety, outputsOfOneNameInOneKeptFolderGetNumbers)
{
    for (const char* album : {"one", "two"}) {
        fs::create_directories(in(album) / "may");
        fs::rename(photograph("x.jpg"), in(album) / "may/a.jpg");
    }
    EXPECT_EQ(runInto({"--keep-folders", "one", "two"}).status, 0);
    EXPECT_TRUE(fs::exists(out("may/a.webp")));
    EXPECT_TRUE(fs::exists(out("may/a 2.webp")));
}

} // namespace
} // namespace lumora::cli::test
