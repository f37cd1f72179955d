// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/model_objects.h"
#include "ui/settings/settings_chip_group.h"
#include "ui/settings/settings_chips.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace lumora {
namespace {

QString words(const char* text)
{
    return QString::fromUtf8(text);
}

// The menu's items as it would open now: "[x]" before a checked one, "-" for a divider, "(…)" for what is no
// choice.
QStringList openedItems(SettingsChip& chip)
{
    Q_EMIT chip.menu()->aboutToShow();
    QStringList items;
    for (const QAction* action : chip.menu()->actions()) {
        if (action->isSeparator()) {
            items << (action->text().isEmpty() ? words("-") : words("# ") + action->text());
        } else if (!action->isEnabled()) {
            items << words("(%1)").arg(action->text());
        } else {
            items << (action->isChecked() ? words("[x] ") : QString()) + action->text();
        }
    }
    return items;
}

void choose(SettingsChip& chip, const char* item)
{
    Q_EMIT chip.menu()->aboutToShow();
    for (QAction* action : chip.menu()->actions()) {
        if (action->text() == words(item) && !action->isSeparator()) return action->trigger();
    }
    FAIL() << "no item " << item;
}

class SettingsChips : public ::testing::Test
{
protected:
    test::ModelObjects m_objects;
    LumoraSettings& m_settings = m_objects.settings;
};

TEST_F(SettingsChips, ShowTheDefaults)
{
    SettingsChipGroup group(m_settings);
    const char* const expected[][3] = {
        {"photo", "WebP Lossy", "Change output format"},
        {"arrow.left.and.right", "2560px", "Change resize settings"},
        {"slider.horizontal.3", "Quality 82", "Change compression quality"},
        {"trash", "Remove metadata", "Toggle metadata removal"},
        {"paintpalette", "sRGB", "Toggle color optimization"},
    };
    const QList<SettingsChip*> chips = group.findChildren<SettingsChip*>();
    ASSERT_EQ(chips.size(), 5);
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(chips[i]->systemName(), words(expected[i][0]));
        EXPECT_EQ(chips[i]->text(), words(expected[i][1]));
        EXPECT_EQ(chips[i]->toolTip(), words(expected[i][2]));
    }
}

TEST_F(SettingsChips, SpeakTheirTextAndTheirHelp)
{
    FormatSettingsChip chip(m_settings);
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&chip);
    ASSERT_NE(spoken, nullptr);
    EXPECT_EQ(spoken->text(QAccessible::Name), words("WebP Lossy"));
    EXPECT_EQ(spoken->text(QAccessible::Description), words("Change output format"));
    EXPECT_EQ(spoken->role(), QAccessible::ButtonMenu);
}

TEST_F(SettingsChips, FormatMenuListsEveryFormatAndSetsIt)
{
    FormatSettingsChip chip(m_settings);
    EXPECT_EQ(openedItems(chip),
              QStringList({words("# Format"), words("[x] WebP Lossy"), words("WebP Lossless"), words("JPEG"),
                           words("PNG"), words("HEIC"), words("Original Format")}));
    choose(chip, "HEIC");
    EXPECT_EQ(m_settings.outputFormat(), OutputFormat::heic);
    EXPECT_EQ(chip.text(), words("HEIC"));
    EXPECT_TRUE(openedItems(chip).contains(words("[x] HEIC")));
}

TEST_F(SettingsChips, ResizeIconFollowsTheMode)
{
    ResizeSettingsChip chip(m_settings);
    const std::pair<ResizeMode, const char*> icons[] = {
        {ResizeMode::maxWidth, "arrow.left.and.right"},
        {ResizeMode::maxHeight, "arrow.up.and.down"},
        {ResizeMode::longestEdge, "arrow.up.left.and.arrow.down.right"},
        {ResizeMode::none, "aspectratio"},
    };
    for (const auto& [mode, icon] : icons) {
        m_settings.resizeMode.set(mode);
        EXPECT_EQ(chip.systemName(), words(icon));
    }
    EXPECT_EQ(chip.text(), words("No resize"));
}

TEST_F(SettingsChips, ResizeMenuListsModesAndPresets)
{
    ResizeSettingsChip chip(m_settings);
    EXPECT_EQ(openedItems(chip),
              QStringList({words("# Resize Mode"), words("[x] Max Width"), words("Max Height"),
                           words("Longest Edge"), words("No Resize"), words("-"), words("1280 px"),
                           words("1920 px"), words("2560 px"), words("3840 px")}));
}

TEST_F(SettingsChips, APresetTurnsOnWidthLimitingOnlyWhereResizingIsOff)
{
    ResizeSettingsChip chip(m_settings);
    m_settings.resizeMode.set(ResizeMode::none);
    choose(chip, "1920 px");
    EXPECT_EQ(m_settings.resizeMode(), ResizeMode::maxWidth);
    EXPECT_EQ(chip.text(), words("1920px"));
    m_settings.resizeMode.set(ResizeMode::longestEdge);
    choose(chip, "3840 px");
    EXPECT_EQ(m_settings.resizeMode(), ResizeMode::longestEdge);
    EXPECT_EQ(m_settings.maximumPixels(), 3840);
}

TEST_F(SettingsChips, QualityMenuOffersPresets)
{
    QualitySettingsChip chip(m_settings);
    EXPECT_EQ(openedItems(chip), QStringList({words("Quality 60"), words("Quality 70"), words("Quality 80"),
                                              words("Quality 90"), words("Quality 100")}));
    choose(chip, "Quality 90");
    EXPECT_EQ(m_settings.quality(), 90);
    EXPECT_EQ(chip.text(), words("Quality 90"));
}

TEST_F(SettingsChips, QualityIsCutOffNotRounded)
{
    QualitySettingsChip chip(m_settings);
    m_settings.quality.set(85.9);
    EXPECT_EQ(chip.text(), words("Quality 85"));
}

TEST_F(SettingsChips, ALosslessFormatLeavesNoQualityToChoose)
{
    QualitySettingsChip chip(m_settings);
    m_settings.outputFormat.set(OutputFormat::png);
    EXPECT_EQ(chip.text(), words("Lossless"));
    EXPECT_EQ(chip.systemName(), words("checkmark.seal"));
    EXPECT_EQ(openedItems(chip), QStringList({words("(Lossless format)")}));
}

TEST_F(SettingsChips, MetadataChipTogglesThereAndBack)
{
    MetadataSettingsChip chip(m_settings);
    chip.click();
    EXPECT_FALSE(m_settings.removeMetadata());
    EXPECT_EQ(chip.text(), words("Keep metadata"));
    EXPECT_EQ(chip.systemName(), words("doc.badge.gearshape"));
    chip.click();
    EXPECT_TRUE(m_settings.removeMetadata());
}

TEST_F(SettingsChips, ColourChipTogglesBySpaceAndReturn)
{
    ColorSettingsChip chip(m_settings);
    QTest::keyClick(&chip, Qt::Key_Space);
    EXPECT_FALSE(m_settings.optimizeColorForSharing());
    EXPECT_EQ(chip.text(), words("Original color"));
    QTest::keyClick(&chip, Qt::Key_Return);
    EXPECT_TRUE(m_settings.optimizeColorForSharing());
}

TEST_F(SettingsChips, MenuOpensByReturn)
{
    FormatSettingsChip chip(m_settings);
    chip.show();
    QSignalSpy opened(chip.menu(), &QMenu::aboutToShow);
    QObject::connect(chip.menu(), &QMenu::aboutToShow, chip.menu(), &QMenu::close, Qt::QueuedConnection);
    QTest::keyClick(&chip, Qt::Key_Return);
    EXPECT_EQ(opened.count(), 1);
}

TEST_F(SettingsChips, AreCapsulesOnTranslucentCream)
{
    ColorSettingsChip chip(m_settings);
    chip.resize(chip.sizeHint());
    EXPECT_EQ(chip.height(), 22);
    QImage image(chip.size(), QImage::Format_ARGB32);
    image.fill(Qt::black);
    chip.render(&image, {}, {}, QWidget::RenderFlags());
    const QColor ground = image.pixelColor(chip.width() - 6, 4);
    EXPECT_NEAR(ground.red(), 255 * 0.969 * 0.1, 2);
    EXPECT_EQ(image.pixelColor(0, 0), QColor(Qt::black));
}

TEST_F(SettingsChips, StandSixApartAndTheRowKeepsItsPlaceInALayout)
{
    QWidget window;
    auto* row = new QHBoxLayout(&window);
    row->setContentsMargins(30, 30, 30, 30);
    auto* group = new SettingsChipGroup(m_settings);
    row->addWidget(group);
    window.resize(700, 100);
    window.show();
    QCoreApplication::processEvents();
    const QList<SettingsChip*> chips = group->findChildren<SettingsChip*>();
    EXPECT_EQ(chips[0]->mapTo(&window, QPoint()).x(), 30);
    for (int i = 1; i < 5; ++i)
        EXPECT_EQ(chips[i]->x() - (chips[i - 1]->x() + chips[i - 1]->width()), 6);
    EXPECT_EQ(group->x(), 30 - SettingsChipGroup::bleed.left());
}

TEST_F(SettingsChips, TheRowScrollsToTheFocusedChip)
{
    SettingsChipGroup group(m_settings);
    group.resize(200, group.sizeHint().height());
    group.show();
    group.activateWindow();
    QCoreApplication::processEvents();
    EXPECT_GT(group.horizontalScrollBar()->maximum(), 0);
    QList<SettingsChip*> chips = group.findChildren<SettingsChip*>();
    chips[3]->setFocus(Qt::TabFocusReason);
    QTest::keyClick(chips[3], Qt::Key_Tab);
    const QRect last(chips[4]->mapTo(group.viewport(), QPoint()), chips[4]->size());
    EXPECT_TRUE(group.viewport()->rect().contains(last)) << last.x() << " " << last.width();
}

using SettingsChipsDeathTest = SettingsChips;

TEST_F(SettingsChipsDeathTest, AQualityBeyondEveryIntegerEndsTheProgramWithAMessage)
{
    m_settings.quality.set(1e300);
    EXPECT_DEATH(QualitySettingsChip chip(m_settings), "stored quality is not a usable number");
}

} // namespace
} // namespace lumora
