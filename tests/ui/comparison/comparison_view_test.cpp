// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/comparison_view.h"

#include "tests/support/sample_images.h"
#include "tests/ui/comparison/comparison_window.h"
#include "ui/comparison/comparison_controls.h"
#include "ui/comparison/picture_caption.h"
#include "ui/controls/chip_button.h"

#include <QNativeGestureEvent>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

namespace lumora {
namespace {

using std::filesystem::path;

class Comparison : public testing::Test, protected test::ComparisonWindow
{
protected:
    Comparison() { setenv("XDG_DATA_HOME", (folder() / "data").c_str(), 1); }

    path picture(const char* name, const test::Pixels& pixels, const test::SaveOptions& options = {})
    {
        test::save(folder() / name, pixels, options);
        return folder() / name;
    }
    path plain(const char* name, QSize size, std::vector<std::uint8_t> colour)
    {
        return picture(name, test::uniformPicture(size.width(), size.height(), std::move(colour)));
    }
    // A red original and a blue output of the same extent.
    void addRedAndBlue(QSize originalSize = {1600, 800}, QSize outputSize = {1600, 800})
    {
        const path source = plain("a.png", originalSize, {200, 0, 0});
        add(source, plain("a-out.png", outputSize, {0, 0, 200}));
    }

    QImage grab() { return canvas().grab().toImage(); }
    // What is in the middle of the height, at a part of the width.
    QColor colourAt(double part)
    {
        const QImage image = grab();
        return image.pixelColor(static_cast<int>(part * (image.width() - 1)), image.height() / 2 + 30);
    }
    QString colourNameAt(double part)
    {
        const QColor colour = colourAt(part);
        if (colour.red() > 150 && colour.blue() < 50) return QStringLiteral("red");
        if (colour.blue() > 150 && colour.red() < 50) return QStringLiteral("blue");
        return colour.name();
    }
    int lineX() { return static_cast<int>(canvas().split() * canvas().width()); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) { QTest::keyClick(&view, key, modifiers); }
    QString captions()
    {
        QStringList texts;
        for (const PictureCaption* caption : view.findChildren<PictureCaption*>())
            texts << caption->accessibleName();
        return texts.join(u'\n');
    }
    // Processes that this one has started, on whichever thread.
    static int workers()
    {
        int count = 0;
        for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
            std::ifstream children(thread.path() / "children");
            for (int process = 0; children >> process;)
                ++count;
        }
        return count;
    }
    ChipButton* chip(const char* symbol)
    {
        for (ChipButton* candidate : view.findChildren<ChipButton*>()) {
            if (candidate->systemName() == QLatin1String(symbol)) return candidate;
        }
        return nullptr;
    }
};

TEST_F(Comparison, ShowsTheOriginalAtTheLeftOfTheLineAndTheOutputAtItsRight)
{
    addRedAndBlue();
    ASSERT_TRUE(compare());
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("red"));
    EXPECT_EQ(colourNameAt(0.7), QStringLiteral("blue"));
    view.setLayoutDirection(Qt::RightToLeft);
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("blue"));
    EXPECT_EQ(colourNameAt(0.7), QStringLiteral("red"));
}

TEST_F(Comparison, SaysWhatBothAre)
{
    addRedAndBlue({1600, 800}, {800, 400});
    ASSERT_TRUE(compare());
    EXPECT_TRUE(captions().contains(QStringLiteral("Original: a.png, PNG, 1600 \u00D7 800, ")));
    EXPECT_TRUE(captions().contains(QStringLiteral("Output: a-out.png, PNG, 800 \u00D7 400, ")));
    EXPECT_TRUE(captions().contains(QStringLiteral("saved ")));
    EXPECT_TRUE(canvas().accessibleName().contains(QStringLiteral("a.png")));
    EXPECT_TRUE(canvas().accessibleDescription().contains(QStringLiteral("line at 50%")));
}

TEST_F(Comparison, NamesItsFilesForTheTaskBar)
{
    addRedAndBlue();
    QSignalSpy titles(&view, &ComparisonView::titleChanged);
    ASSERT_TRUE(compare());
    EXPECT_TRUE(titles.last().first().toString().contains(QStringLiteral("a.png")));
}

TEST_F(Comparison, HasTheLineDraggedByThePointer)
{
    addRedAndBlue();
    ASSERT_TRUE(compare());
    QTest::mousePress(&canvas(), Qt::LeftButton, {}, QPoint(lineX() + 3, 100));
    QTest::mouseMove(&canvas(), QPoint(canvas().width() / 5, 120));
    EXPECT_NEAR(canvas().split(), 0.2, 0.01);
    QTest::mouseRelease(&canvas(), Qt::LeftButton, {}, QPoint(canvas().width() / 5, 120));
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("blue"));
    QTest::mouseMove(&canvas(), QPoint(500, 120));
    EXPECT_NEAR(canvas().split(), 0.2, 0.01);
}

TEST_F(Comparison, HasTheLineMovedByArrowKeysAndToItsEnds)
{
    addRedAndBlue();
    ASSERT_TRUE(compare());
    press(Qt::Key_Left);
    EXPECT_NEAR(canvas().split(), 0.48, 1e-9);
    press(Qt::Key_Right);
    press(Qt::Key_Right);
    EXPECT_NEAR(canvas().split(), 0.52, 1e-9);
    press(Qt::Key_Home);
    press(Qt::Key_Left);
    EXPECT_EQ(canvas().split(), 0);
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("blue"));
    press(Qt::Key_End);
    press(Qt::Key_Right);
    EXPECT_EQ(canvas().split(), 1);
}

TEST_F(Comparison, ZoomsByKeysFromFittingToEightTimes)
{
    addRedAndBlue({3000, 1500}, {3000, 1500});
    ASSERT_TRUE(compare());
    const double fitting = canvas().geometry().zoom();
    press(Qt::Key_Minus);
    EXPECT_EQ(canvas().geometry().zoom(), fitting);
    press(Qt::Key_1);
    EXPECT_EQ(canvas().geometry().zoom(), 1);
    for (int i = 0; i < 20; ++i)
        press(Qt::Key_Plus);
    EXPECT_EQ(canvas().geometry().zoom(), 8);
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("red"));
    EXPECT_EQ(colourNameAt(0.7), QStringLiteral("blue"));
    press(Qt::Key_0);
    EXPECT_EQ(canvas().geometry().zoom(), fitting);
}

TEST_F(Comparison, ZoomsByWheelAndPinchWhereThePointerIs)
{
    addRedAndBlue({3000, 1500}, {3000, 1500});
    ASSERT_TRUE(compare());
    const double fitting = canvas().geometry().zoom();
    const QPointF place(100, 100);
    QWheelEvent wheel(place, canvas().mapToGlobal(place), {}, {0, 360}, Qt::NoButton, {}, Qt::NoScrollPhase,
                      false);
    QCoreApplication::sendEvent(&canvas(), &wheel);
    EXPECT_NEAR(canvas().geometry().zoom(), 2 * fitting, 1e-6);
    EXPECT_LT(canvas().geometry().visible().center().x(), 0.5);
    QNativeGestureEvent pinch(Qt::ZoomNativeGesture, QPointingDevice::primaryPointingDevice(), 2, place,
                              place, canvas().mapToGlobal(place), 0.5, {});
    QCoreApplication::sendEvent(&canvas(), &pinch);
    EXPECT_NEAR(canvas().geometry().zoom(), 3 * fitting, 1e-6);
}

TEST_F(Comparison, PansByDragAndKeysWhenZoomedIn)
{
    addRedAndBlue({3000, 1500}, {3000, 1500});
    ASSERT_TRUE(compare());
    press(Qt::Key_1);
    const QPoint before = canvas().geometry().frame().topLeft();
    QTest::mousePress(&canvas(), Qt::LeftButton, {}, QPoint(100, 100));
    QTest::mouseMove(&canvas(), QPoint(130, 90));
    QTest::mouseRelease(&canvas(), Qt::LeftButton, {}, QPoint(130, 90));
    EXPECT_EQ(canvas().geometry().frame().topLeft() - before, QPoint(30, -10));
    EXPECT_EQ(canvas().split(), 0.5);
    press(Qt::Key_Right, Qt::ShiftModifier);
    press(Qt::Key_Down);
    EXPECT_EQ(canvas().geometry().frame().topLeft() - before, QPoint(30 - 64, -10 - 64));
}

// A row of the original's pixels for every two: columns of the picture are told apart only when nothing is
// made up between them.
TEST_F(Comparison, ShowsSquarePixelsFromTwiceTheSizeOn)
{
    test::Pixels stripes = test::uniformPicture(400, 400, {0, 0, 0});
    for (std::size_t i = 0; i < stripes.bytes.size(); ++i)
        stripes.bytes[i] = i / 3 % 2 == 0 ? 255 : 0;
    const path source = picture("stripes.png", stripes);
    add(source, source.parent_path() / "missing.png");
    ASSERT_TRUE(compare());
    press(Qt::Key_1);
    canvas().zoomTo(4);
    const QImage image = grab();
    for (int x = 200; x < 260; ++x) {
        const int value = image.pixelColor(x, 300).red();
        EXPECT_TRUE(value == 0 || value == 255) << x << ' ' << value;
    }
}

TEST_F(Comparison, LaysASmallerOutputOverTheUprightOriginal)
{
    const path source = picture("a.jpg", test::corneredPicture(600, 400), {.orientation = 6});
    test::Pixels turned = test::corneredPicture(40, 60);
    const path output = picture("a-out.png", turned);
    add(source, output);
    ASSERT_TRUE(compare());
    EXPECT_TRUE(captions().contains(QStringLiteral("400 \u00D7 600")));
    EXPECT_EQ(canvas().geometry().frame().size(),
              QSize(400, 600).scaled(canvas().size(), Qt::KeepAspectRatio).boundedTo({400, 600}));
    // Of the turned original the corners are blue-left: what is red at the top left was at the lower left.
    const QRect frame = canvas().geometry().frame();
    press(Qt::Key_End);
    const QColor topRight = grab().pixelColor(frame.right() - 20, frame.top() + 60);
    EXPECT_GT(topRight.red(), topRight.blue());
    press(Qt::Key_Home);
    EXPECT_GT(grab().pixelColor(frame.left() + 20, frame.top() + 60).red(), 150);
}

TEST_F(Comparison, FlipsWhileTheKeyIsHeld)
{
    addRedAndBlue();
    ASSERT_TRUE(compare());
    QTest::keyPress(&view, Qt::Key_Space);
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("blue"));
    EXPECT_EQ(colourNameAt(0.7), QStringLiteral("red"));
    QTest::keyRelease(&view, Qt::Key_Space);
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("red"));
    QTest::mousePress(chip("arrow.left.arrow.right"), Qt::LeftButton);
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("blue"));
    QTest::mouseRelease(chip("arrow.left.arrow.right"), Qt::LeftButton);
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("red"));
}

// The key that opened the window is still down.
TEST_F(Comparison, IsNotFlippedByTheRepeatsOfAKey)
{
    addRedAndBlue();
    ASSERT_TRUE(compare());
    QKeyEvent repeat(QEvent::KeyPress, Qt::Key_Space, {}, QStringLiteral(" "), true);
    QCoreApplication::sendEvent(&view, &repeat);
    EXPECT_FALSE(canvas().isFlipped());
}

TEST_F(Comparison, ShowsDifferencesAmplified)
{
    const path source = plain("a.png", {1600, 800}, {100, 100, 100});
    test::Pixels changed = test::uniformPicture(1600, 800, {100, 100, 100});
    for (std::size_t i = 0; i < changed.bytes.size(); i += 3) {
        if (i / 3 % 1600 >= 800) changed.bytes[i] = 110;
    }
    add(source, picture("a-out.png", changed));
    ASSERT_TRUE(compare());
    press(Qt::Key_D);
    EXPECT_EQ(colourAt(0.3), QColor(0, 0, 0));
    EXPECT_EQ(colourAt(0.7), QColor(80, 0, 0));
    EXPECT_TRUE(chip("circle.lefthalf.filled")->isChecked());
    press(Qt::Key_D);
    EXPECT_EQ(colourAt(0.3), QColor(100, 100, 100));
}

TEST_F(Comparison, GoesToTheNextResultAndBack)
{
    addRedAndBlue();
    const path source = plain("b.png", {100, 100}, {0, 200, 0});
    add(source, source);
    ASSERT_TRUE(compare(1));
    EXPECT_FALSE(chip("arrow.down")->isEnabled());
    press(Qt::Key_PageUp);
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_TRUE(captions().contains(QStringLiteral("b.png")));
    EXPECT_EQ(canvas().geometry().frame().size(), QSize(100, 100));
    chip("arrow.down")->click();
    ASSERT_TRUE(waitUntilComplete());
    EXPECT_EQ(colourNameAt(0.3), QStringLiteral("red"));
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
    ComparisonView other(list, path(LUMORA_WORKER));
    other.resize(1000, 720);
    other.show();
    QCoreApplication::processEvents();
    const auto* pictures = other.findChild<ComparisonCanvas*>();
    // One after another: what the last pair leaves behind is not the next one's.
    constexpr int pairs = 4;
    for (int pair = 0; pair < pairs; ++pair) {
        other.compare(row(0));
        ASSERT_TRUE(test::waitFor([&] { return other.isComplete(); }));
        EXPECT_TRUE(pictures->hasBoth()) << pair;
    }
}

TEST_F(Comparison, EndsItsWorkWhenItIsClosedEarly)
{
    addRedAndBlue({3000, 1500}, {3000, 1500});
    ASSERT_EQ(workers(), 0);
    auto other = std::make_unique<ComparisonView>(list, path(LUMORA_WORKER));
    other->compare(row(0));
    ASSERT_TRUE(test::waitFor([&] { return workers() == 2; }));
    other.reset();
    EXPECT_EQ(workers(), 0);
}

TEST_F(Comparison, NoneOfItsControlsCoversAnother)
{
    addRedAndBlue();
    ASSERT_TRUE(compare());
    for (const int width : {1000, 620, 480}) {
        view.resize(width, 420);
        QCoreApplication::processEvents();
        const auto* controls = view.findChild<ComparisonControls*>();
        const auto parts = controls->findChildren<QWidget*>(Qt::FindDirectChildrenOnly);
        for (const QWidget* part : parts) {
            for (const QWidget* other : parts)
                EXPECT_TRUE(part == other || !part->geometry().intersects(other->geometry())) << width;
        }
    }
}

TEST_F(Comparison, AsksToBeClosedByEscape)
{
    addRedAndBlue();
    ASSERT_TRUE(compare());
    QSignalSpy requests(&view, &ComparisonView::closeRequested);
    press(Qt::Key_Escape);
    EXPECT_EQ(requests.count(), 1);
}

} // namespace
} // namespace lumora
