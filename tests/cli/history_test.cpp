// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the program remembers, and how it takes that back.
#include "tests/cli/cli_fixture.h"

namespace lumora::cli::test {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

using Snapshot = std::map<fs::path, std::pair<std::string, fs::file_time_type>>;

class CliHistory : public CliTest
{
protected:
    // Without the fixture's watch over the originals, which are to go to the Trash here.
    Outcome go(const std::vector<std::string>& arguments)
    {
        const auto process = start(arguments);
        const int status = process->wait();
        return {status, readFile(m_launch.results), process->complaints()};
    }

    Snapshot everything() const
    {
        Snapshot all;
        for (const char* folder : {"in", "out"}) {
            for (const auto& entry : fs::directory_iterator(beside(folder)))
                all[entry.path()] = {readFile(entry.path()), entry.last_write_time()};
        }
        return all;
    }
};

TEST_F(CliHistory, undoBringsEverythingBackBitByBit)
{
    photograph("a.jpg");
    photograph("b.png");
    const Snapshot before = everything();
    ASSERT_EQ(go({"--trash-original", "-o", out(""), "a.jpg", "b.png"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("a.webp", "b.webp"));
    EXPECT_FALSE(fs::exists(in("a.jpg")));
    const Snapshot after = everything();

    const Outcome foreseen = go({"undo", "--dry-run"});
    EXPECT_EQ(foreseen.status, 0);
    EXPECT_THAT(foreseen.results, HasSubstr("Batch 1: 2 of 2 would be undone"));
    EXPECT_EQ(everything(), after);

    const Outcome undone = go({"undo", "--json"});
    EXPECT_EQ(undone.status, 0) << undone.results;
    ASSERT_THAT(undone.objects(), SizeIs(2));
    for (const auto& object : undone.objects()) {
        EXPECT_EQ(object.at("success"), true);
        EXPECT_EQ(object.at("message"), "Undone");
    }
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(go({"undo"}).status, 0);
    EXPECT_EQ(everything(), before);
}

TEST_F(CliHistory, undoLeavesChangedOutputsAndSaysSo)
{
    photograph("a.jpg");
    ASSERT_EQ(runInto({"a.jpg"}).status, 0);
    writeFile(out("a.webp"), "edited");
    const Outcome undone = run({"undo"});
    EXPECT_EQ(undone.status, 1);
    EXPECT_THAT(undone.results, HasSubstr("The output is left as it is: the output was changed since"));
    EXPECT_EQ(readFile(out("a.webp")), "edited");
}

TEST_F(CliHistory, undoOfABatchThatWroteNothingSaysSo)
{
    writeFile(in("broken.png"), "no picture");
    ASSERT_EQ(runInto({"broken.png"}).status, 1);
    const Outcome undone = go({"undo"});
    EXPECT_EQ(undone.status, 1);
    EXPECT_EQ(undone.results, "");
    EXPECT_THAT(undone.complaints, HasSubstr("batch 1 wrote nothing that could be undone"));
}

TEST_F(CliHistory, undoRemovesTheFoldersThatOnlyTheBatchNeeded)
{
    fs::create_directories(in("album/2025/may"));
    fs::create_directories(in("album/2026"));
    fs::create_directories(out("2026"));
    fs::rename(photograph("x.jpg"), in("album/2025/a.jpg"));
    fs::rename(photograph("y.jpg"), in("album/2025/may/a.jpg"));
    fs::rename(photograph("z.jpg"), in("album/2026/a.jpg"));
    ASSERT_EQ(go({"--keep-folders", "-o", out(""), "album"}).status, 0);
    EXPECT_TRUE(fs::exists(out("2025/may/a.webp")));
    EXPECT_EQ(go({"undo"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("2026"));

    ASSERT_EQ(go({"--keep-folders", "-o", out(""), "album"}).status, 0);
    writeFile(out("2025/somebody's"), "notes");
    EXPECT_EQ(go({"undo"}).status, 0);
    EXPECT_EQ(readFile(out("2025/somebody's")), "notes");
    EXPECT_FALSE(fs::exists(out("2025/may")));
}

TEST_F(CliHistory, olderBatchesAreUndoneByNumber)
{
    photograph("a.jpg");
    ASSERT_EQ(runInto({"a.jpg"}).status, 0);
    ASSERT_EQ(runInto({"-f", "jpeg", "a.jpg"}).status, 0);
    EXPECT_EQ(run({"undo", "1"}).status, 0);
    EXPECT_THAT(outputs(), ElementsAre("a.jpg"));
    const Outcome unknown = run({"undo", "9"});
    EXPECT_EQ(unknown.status, 1);
    EXPECT_EQ(unknown.complaints, "lumora-cli: no batch 9 is remembered; see lumora-cli history\n");
}

TEST_F(CliHistory, tellsAndForgets)
{
    photograph("a.jpg");
    writeFile(in("b.jpg"), "");
    ASSERT_EQ(runInto({"a.jpg", "b.jpg"}).status, 1);
    const auto told = run({"history", "--json"}).objects();
    ASSERT_THAT(told, SizeIs(1));
    EXPECT_EQ(told[0].at("batch"), 1);
    EXPECT_EQ(told[0].at("origin"), "lumora-cli");
    EXPECT_EQ(told[0].at("files"), 2);
    EXPECT_EQ(told[0].at("written"), 1);
    EXPECT_EQ(told[0].at("originalBytes"), fs::file_size(in("a.jpg")));
    EXPECT_EQ(told[0].at("outputBytes"), fs::file_size(out("a.webp")));
    EXPECT_THAT(run({"history"}).results, HasSubstr("2 files, 1 written"));
    EXPECT_EQ(run({"history", "--clear"}).status, 0);
    EXPECT_THAT(run({"history", "--json"}).objects(), IsEmpty());
    const Outcome nothing = run({"undo"});
    EXPECT_EQ(nothing.status, 1);
    EXPECT_EQ(nothing.complaints, "lumora-cli: nothing is remembered that could be undone\n");
    EXPECT_THAT(outputs(), ElementsAre("a.webp"));
}

TEST_F(CliHistory, whatIsNotToBeRememberedIsNot)
{
    photograph("a.jpg");
    ASSERT_EQ(runInto({"--no-history", "a.jpg"}).status, 0);
    EXPECT_THAT(run({"history", "--json"}).objects(), IsEmpty());
}

TEST_F(CliHistory, aHistoryThatCannotBeKeptCostsOneLineAndNoFile)
{
    photograph("a.jpg");
    photograph("b.jpg");
    fs::create_directory(home() / "data");
    writeFile(home() / "data" / "Lumora", "no folder");
    const Outcome outcome = runInto({"a.jpg", "b.jpg"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_THAT(outcome.results, HasSubstr("Files 2/2"));
    EXPECT_THAT(outcome.complaints,
                testing::MatchesRegex("lumora-cli: the history cannot be kept: [^\n]*\n"));
}

TEST_F(CliHistory, twoProgramsAtOnceLoseNothing)
{
    photograph("a.jpg");
    std::vector<std::unique_ptr<CliProcess>> processes;
    processes.reserve(4);
    for (int number = 0; number < 4; ++number)
        processes.push_back(start({"-o", out(std::to_string(number)), "a.jpg", "--quiet"}));
    for (const auto& process : processes)
        EXPECT_EQ(process->wait(), 0);
    EXPECT_THAT(run({"history", "--json"}).objects(), SizeIs(4));
}

} // namespace
} // namespace lumora::cli::test
