// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Where the two files of a comparison are, what is said when they cannot be shown, and who reads them.
#include "tests/ui/comparison/comparison_test.h"
#include "ui/comparison/comparison_view.h"

#include <fstream>

namespace lumora {
namespace {

using test::Comparison;

// Processes that this one has started, on whichever thread.
int workers()
{
    int count = 0;
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        std::ifstream children(thread.path() / "children");
        for (int process = 0; children >> process;)
            ++count;
    }
    return count;
}

TEST_F(Comparison, FindsAnOriginalInTheTrash)
{
    addRedAndBlue();
    const path trash = folder() / "data" / "Trash";
    std::filesystem::create_directories(trash / "files");
    std::filesystem::create_directories(trash / "info");
    std::filesystem::rename(folder() / "a.png", trash / "files" / "a.png");
    test::writeText(trash / "info" / "a.png.trashinfo",
                    "[Trash Info]\nPath=" + (folder() / "a.png").string() +
                        "\nDeletionDate=2026-01-14T09:12:44\n");
    ASSERT_TRUE(compare());
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("red"));
    EXPECT_TRUE(captions().contains(QStringLiteral("in the Trash")));
}

TEST_F(Comparison, ExplainsAMissingOriginalAndShowsTheOutputAlone)
{
    addRedAndBlue();
    std::filesystem::remove(folder() / "a.png");
    ASSERT_TRUE(compare());
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("blue"));
    EXPECT_EQ(colourNameAt(0.7), QStringLiteral("blue"));
    EXPECT_TRUE(canvas().accessibleDescription().contains(
        QStringLiteral("The original is no longer in its folder, nor in the Trash.")));
    EXPECT_FALSE(chip("circle.lefthalf.filled")->isEnabled());
}

TEST_F(Comparison, ExplainsADamagedFile)
{
    addRedAndBlue();
    test::writeText(folder() / "a-out.png", "no picture");
    ASSERT_TRUE(compare());
    EXPECT_EQ(colourNameAt(0.7), QStringLiteral("red"));
    EXPECT_TRUE(canvas().accessibleDescription().contains(QStringLiteral("The output cannot be shown")));
}

TEST_F(Comparison, ExplainsAFileWhoseDamageIsInItsPixels)
{
    const path source = picture("a.png", test::corneredPicture(800, 600));
    const path output = picture("a-out.jpg", test::corneredPicture(800, 600));
    const std::string bytes = test::readBytes(output);
    test::writeText(output, bytes.substr(0, bytes.size() / 2));
    add(source, output);
    ASSERT_TRUE(compare());
    EXPECT_TRUE(test::waitFor([&] {
        return canvas().accessibleDescription().contains(QStringLiteral("The output cannot be shown"));
    }));
    EXPECT_FALSE(canvas().hasBoth());
}

TEST_F(Comparison, IsReadByWorkersToo)
{
    addRedAndBlue();
    ComparisonView other{path(LUMORA_WORKER)};
    other.resize(1000, 720);
    other.show();
    QCoreApplication::processEvents();
    const auto* pictures = other.findChild<ComparisonCanvas*>();
    // One after another: what the last pair leaves behind is not the next one's.
    constexpr int pairs = 4;
    for (int pair = 0; pair < pairs; ++pair) {
        other.compare(list, row(0));
        ASSERT_TRUE(test::waitFor([&] { return other.isComplete(); }));
        EXPECT_TRUE(pictures->hasBoth()) << pair;
    }
}

TEST_F(Comparison, EndsItsWorkWhenItIsClosedEarly)
{
    addRedAndBlue({3000, 1500}, {3000, 1500});
    ASSERT_EQ(workers(), 0);
    auto other = std::make_unique<ComparisonView>(path(LUMORA_WORKER));
    other->compare(list, row(0));
    ASSERT_TRUE(test::waitFor([&] { return workers() == 2; }));
    other.reset();
    EXPECT_EQ(workers(), 0);
}

} // namespace
} // namespace lumora
