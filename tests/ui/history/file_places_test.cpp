// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/file_places.h"

#include "system/content_digest.h"
#include "system/regular_file.h"
#include "tests/ui/history/history_window.h"
#include "ui/history/file_places_reader.h"

#include <gtest/gtest.h>

namespace lumora {
namespace {

namespace fs = std::filesystem;
using test::writeFile;

class FilePlacesTest : public testing::Test, protected test::HistoryWindow
{
protected:
    FilePlaces now()
    {
        TrashContents trash;
        return placesOf(file, trash);
    }
    fs::path throwAway(const fs::path& path)
    {
        const fs::path trash = folder / "data" / "Trash";
        fs::create_directories(trash / "files");
        fs::create_directories(trash / "info");
        fs::path thrown = trash / "files" / path.filename();
        fs::rename(path, thrown);
        writeFile(trash / "info" / (path.filename().string() + ".trashinfo"),
                  "[Trash Info]\nPath=" + path.string() + "\nDeletionDate=2026-01-14T09:12:44\n");
        return thrown;
    }

    FileRecord file = real("a.jpg");
};

TEST_F(FilePlacesTest, AreThereAsTheyWereLeft)
{
    EXPECT_EQ(now(), (FilePlaces{Whereabouts::there, Whereabouts::there}));
    file.output.reset();
    EXPECT_EQ(now(), (FilePlaces{Whereabouts::there, std::nullopt}));
}

TEST_F(FilePlacesTest, AreChangedWhereAnotherContentStands)
{
    writeFile(*file.output, "another");
    EXPECT_EQ(now().output, Whereabouts::changed);
    writeFile(file.source, "another one");
    EXPECT_EQ(now().original, Whereabouts::changed);
}

TEST_F(FilePlacesTest, CountAnOutputWithAnotherTimeAsThereWhenItsContentIsTheSame)
{
    file.trace.outputDigest = contentDigest(openRegularFile(*file.output)->get()).value();
    fs::last_write_time(*file.output, fs::file_time_type::clock::now() - std::chrono::hours(3));
    EXPECT_EQ(now().output, Whereabouts::there);
    file.trace.outputDigest = "other";
    EXPECT_EQ(now().output, Whereabouts::changed);
}

TEST_F(FilePlacesTest, AreFoundInTheTrash)
{
    file.trace.isOriginalTrashed = true;
    throwAway(*file.output);
    const fs::path thrown = throwAway(file.source);
    EXPECT_EQ(now(), (FilePlaces{Whereabouts::inTrash, Whereabouts::inTrash}));
    // Another file has its place by now.
    file.trace.trashedOriginal = thrown;
    writeFile(file.source, "another one");
    EXPECT_EQ(now().original, Whereabouts::inTrash);
}

TEST_F(FilePlacesTest, AreGoneWhereNothingIsFound)
{
    fs::remove(file.source);
    fs::remove(*file.output);
    EXPECT_EQ(now(), (FilePlaces{Whereabouts::gone, Whereabouts::gone}));
}

TEST_F(FilePlacesTest, DoNotTakeTheOutputForTheOriginalWhosePlaceItHas)
{
    file.source = *file.output;
    EXPECT_EQ(now(), (FilePlaces{Whereabouts::gone, Whereabouts::there}));
}

TEST_F(FilePlacesTest, AreReadInOrderAndAgainWhenTheTrashIsForgotten)
{
    std::vector<std::pair<std::int64_t, FilePlaces>> taken;
    FilePlacesReader reader(
        [&](std::int64_t id, const FilePlaces& places) { taken.emplace_back(id, places); });
    FileRecord second = real("b.jpg");
    file.id = 1;
    second.id = 2;
    fs::remove(file.source);
    reader.want({file, second});
    ASSERT_TRUE(test::waitFor([&] { return taken.size() == 2; }));
    EXPECT_EQ(taken[0].first, 1);
    EXPECT_EQ(taken[0].second.original, Whereabouts::gone);
    EXPECT_EQ(taken[1].second.original, Whereabouts::there);
    throwAway(second.source);
    reader.want({second});
    ASSERT_TRUE(test::waitFor([&] { return taken.size() == 3; }));
    EXPECT_EQ(taken[2].second.original, Whereabouts::gone);
    reader.forgetTrash();
    reader.want({second});
    ASSERT_TRUE(test::waitFor([&] { return taken.size() == 4; }));
    EXPECT_EQ(taken[3].second.original, Whereabouts::inTrash);
}

} // namespace
} // namespace lumora
