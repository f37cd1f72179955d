// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/comparison_view.h"

#include "tests/ui/comparison/comparison_test.h"
#include "ui/comparison/comparison_controls.h"

#include <QNativeGestureEvent>
#include <QSignalSpy>
#include <QWheelEvent>

namespace lumora {
namespace {

using std::filesystem::path;
using test::Comparison;

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
