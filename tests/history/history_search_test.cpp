// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/history/history_harness.h"

namespace lumora {
namespace {

namespace fs = std::filesystem;
using test::HistoryTest;
using testing::ElementsAre;
using testing::IsEmpty;

class HistorySearch : public HistoryTest
{
protected:
    static FileRecord written(const fs::path& source, const fs::path& output)
    {
        return {.source = source, .output = output, .originalBytes = 10, .outputBytes = 4, .isSuccess = true};
    }

    void SetUp() override
    {
        const auto first = m_history->begin("test", "webp");
        m_history->add(first, written("/Sea/Harbour.JPG", "/Sea/harbour-small.webp"));
        m_history->add(first, row("/in/b.jpg"));
        const auto second = m_history->begin("test", "jpeg");
        m_history->add(second, written("/in/\xFF.png", "/out/sea.jpg"));
        m_history->add(second, written("/in/d.png", "/out/d.jpg"));
        m_files = m_history->find({}).value();
        m_history->markUndone({m_files.front().id});
    }

    // Their sources, in the order in which they are found.
    std::vector<std::string> found(const FileQuery& query)
    {
        std::vector<std::int64_t> ids;
        const auto files = m_history->find(query);
        for (const FoundFile& file : files.value())
            ids.push_back(file.id);
        std::vector<std::string> sources;
        const auto records = m_history->filesNumbered(ids);
        for (const FileRecord& file : records.value())
            sources.push_back(file.source.filename());
        return sources;
    }

    std::unique_ptr<History> m_history = open();
    std::vector<FoundFile> m_files;
};

TEST_F(HistorySearch, FindsTheFilesOfABatchAsTheyFinishedAndThoseOfAllNewestFirst)
{
    const std::int64_t batch = m_files.back().batch;
    EXPECT_THAT(found({.batch = batch}), ElementsAre("Harbour.JPG", "b.jpg"));
    EXPECT_THAT(found({}), ElementsAre("d.png", "\xFF.png", "b.jpg", "Harbour.JPG"));
    EXPECT_THAT(found({.batch = 77}), IsEmpty());
}

TEST_F(HistorySearch, FindsPartsOfTheNamesOfSourcesAndOutputsInCapitalsOrNot)
{
    EXPECT_THAT(found({.name = "HARBOUR"}), ElementsAre("Harbour.JPG"));
    EXPECT_THAT(found({.name = "-Small.w"}), ElementsAre("Harbour.JPG"));
    EXPECT_THAT(found({.name = "sea"}), ElementsAre("\xFF.png")); // folders do not count
    EXPECT_THAT(found({.name = "\xFF"}), ElementsAre("\xFF.png"));
    EXPECT_THAT(found({.name = ".jpg"}), ElementsAre("d.png", "\xFF.png", "b.jpg", "Harbour.JPG"));
    EXPECT_THAT(found({.name = "%"}), IsEmpty());
}

TEST_F(HistorySearch, FindsWhatWasWrittenNotWrittenOrUndone)
{
    EXPECT_THAT(found({.filter = HistoryFilter::written}), ElementsAre("d.png", "\xFF.png", "Harbour.JPG"));
    EXPECT_THAT(found({.filter = HistoryFilter::notWritten}), ElementsAre("b.jpg"));
    EXPECT_THAT(found({.filter = HistoryFilter::undone}), ElementsAre("d.png"));
    EXPECT_THAT(found({.batch = m_files.front().batch, .name = "png", .filter = HistoryFilter::written}),
                ElementsAre("\xFF.png", "d.png"));
}

TEST_F(HistorySearch, SaysOfEachFileWhatAListNeeds)
{
    const auto files = m_history->find({}).value();
    ASSERT_EQ(files.size(), 4u);
    EXPECT_TRUE(files[0].hasOutput && files[0].isUndone);
    EXPECT_TRUE(files[1].hasOutput && !files[1].isUndone);
    EXPECT_FALSE(files[2].hasOutput);
    EXPECT_EQ(files[1].batch, files[0].batch);
    EXPECT_NE(files[2].batch, files[0].batch);
}

TEST_F(HistorySearch, GivesFilesInTheOrderAskedForWithoutThoseForgotten)
{
    const auto files = m_history->filesNumbered({m_files[2].id, 999, m_files[0].id}).value();
    ASSERT_EQ(files.size(), 2u);
    EXPECT_EQ(files[0].source, "/in/b.jpg");
    EXPECT_EQ(files[1].source, "/in/d.png");
    EXPECT_TRUE(files[1].isUndone);
}

TEST_F(HistorySearch, CountsAsSavedWhatIsNotUndone)
{
    const auto batches = m_history->batches().value();
    ASSERT_EQ(batches.size(), 2u);
    EXPECT_EQ(batches[0].saved, 6);
    EXPECT_EQ(batches[0].originalBytes - batches[0].outputBytes, 12);
    EXPECT_EQ(batches[1].saved, 6);
}

TEST_F(HistorySearch, HasNoAnswerWhereTheHistoryCannotBeRead)
{
    History blocked("/dev/null/history.sqlite", [](const std::string&) {});
    EXPECT_FALSE(blocked.find({}));
    EXPECT_FALSE(blocked.filesNumbered({1}));
}

} // namespace
} // namespace lumora
