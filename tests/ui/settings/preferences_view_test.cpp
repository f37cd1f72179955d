// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/folder_bookmark.h"
#include "tests/app/wait_for.h"
#include "tests/ui/model_objects.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/styled_button.h"
#include "ui/controls/styled_label.h"
#include "ui/settings/pixel_field.h"
#include "ui/settings/preference_section.h"
#include "ui/settings/preferences_view.h"
#include "ui/settings/settings_chips.h"
#include "ui/settings/step_button.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QSlider>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <fstream>

namespace lumora {
namespace {

QString words(const char* text)
{
    return QString::fromUtf8(text);
}

class Preferences : public ::testing::Test
{
protected:
    void SetUp() override
    {
        m_view.resize(620, 840);
        m_view.show();
        QCoreApplication::processEvents();
    }

    template <class Control>
    Control* find(const char* text)
    {
        for (Control* control : m_view.findChildren<Control*>()) {
            if (nameOf(*control) == words(text)) return control;
        }
        ADD_FAILURE() << "no control " << text;
        return nullptr;
    }
    static QString nameOf(const QWidget& control) { return control.accessibleName(); }
    static QString nameOf(const QAbstractButton& button)
    {
        return button.text().isEmpty() ? button.accessibleName() : button.text();
    }
    FormRow* row(const char* label)
    {
        for (FormRow* candidate : m_view.findChildren<FormRow*>()) {
            if (candidate->findChild<StyledLabel*>()->text() == words(label)) return candidate;
        }
        ADD_FAILURE() << "no row " << label;
        return nullptr;
    }

    test::ModelObjects m_objects;
    LumoraSettings& m_settings = m_objects.settings;
    std::optional<std::filesystem::path> m_chosen;
    bool m_confirms = true;
    PreferencesView m_view{m_settings, m_objects.stats, [this](QWidget*) { return m_chosen; },
                           [this](QWidget*) { return m_confirms; }};
};

TEST_F(Preferences, ShowEverySectionRowAndTextInOrder)
{
    QStringList texts;
    for (const QLabel* label : m_view.findChildren<QLabel*>())
        texts << label->text();
    const char* const expected[] = {"Preferences",     "Local image conversion defaults",
                                    "Output",          "Format",
                                    "Quality",         "Size",
                                    "Maximum",         "Optimization",
                                    "Destination",     "Destination",
                                    "Folder",          "Filename",
                                    "Miscellaneous",   "Lifetime Stats",
                                    "Safety and order"};
    qsizetype from = 0;
    for (const char* text : expected) {
        const qsizetype found = texts.indexOf(words(text), from);
        EXPECT_GE(found, from) << text;
        from = found + 1;
    }
    QStringList toggles;
    for (const QCheckBox* toggle : m_view.findChildren<QCheckBox*>())
        toggles << toggle->text();
    EXPECT_EQ(
        toggles,
        QStringList({words("Optimize color for sharing"), words("Remove color management information"),
                     words("Remove personal information and metadata"), words("Move original to Trash"),
                     words("Preserve file modification time"), words("Show warning before overwrite"),
                     words("Exit when optimization complete"), words("Quit when the last window is closed"),
                     words("Remember what was done"), words("Move replaced files to Trash"),
                     words("Skip files that were optimized before"), words("Write smaller files only"),
                     words("Keep folders in the chosen folder")}));
}

TEST_F(Preferences, AskForTheirSizeAndPlaceTheirCards)
{
    EXPECT_EQ(m_view.minimumSize(), QSize(620, 780));
    EXPECT_EQ(m_view.sizeHint(), QSize(620, 820));
    const QList<PreferenceSection*> cards = m_view.findChildren<PreferenceSection*>();
    ASSERT_EQ(cards.size(), 6);
    EXPECT_EQ(cards[0]->x(), 22);
    EXPECT_EQ(cards[0]->width(), 620 - 2 * 22);
    for (int i = 1; i < 6; ++i)
        EXPECT_EQ(cards[i]->y() - (cards[i - 1]->y() + cards[i - 1]->height()), 14);
    FormRow* format = row("Format");
    const auto* label = format->findChild<StyledLabel*>();
    EXPECT_EQ(label->width(), 112);
    EXPECT_EQ(format->findChild<QComboBox*>()->x(), 112 + 14);
    EXPECT_EQ(format->x(), 14);
    EXPECT_EQ(find<QLineEdit>("Maximum")->width(), 90);
    EXPECT_EQ(row("Quality")->findChildren<StyledLabel*>().last()->width(), 34);
}

TEST_F(Preferences, CardsRunFromTheRaisedToThePlainLightColour)
{
    PreferenceSection* card = m_view.findChild<PreferenceSection*>();
    const QImage image = m_view.grab().toImage();
    const QPoint corner = card->mapTo(&m_view, QPoint());
    const QColor top = image.pixelColor(corner + QPoint(card->width() / 2, 3));
    const QColor bottom = image.pixelColor(corner + QPoint(card->width() / 2, card->height() - 4));
    EXPECT_NEAR(top.blue(), TidewellTheme::lightCardRaised().blue(), 3);
    EXPECT_NEAR(bottom.blue(), TidewellTheme::lightCard().blue(), 3);
    EXPECT_EQ(image.pixelColor(1, 1).rgb(), TidewellTheme::bg().rgb());
}

TEST_F(Preferences, PickersWriteAndFollowTheirSettings)
{
    auto* format = find<QComboBox>("Format");
    EXPECT_EQ(format->count(), 6);
    EXPECT_EQ(format->currentText(), words("WebP Lossy"));
    QTest::keyClick(format, Qt::Key_Down);
    EXPECT_EQ(m_settings.outputFormat(), OutputFormat::webpLossless);
    m_settings.resizeMode.set(ResizeMode::longestEdge);
    EXPECT_EQ(find<QComboBox>("Size")->currentText(), words("Longest Edge"));
    EXPECT_EQ(find<QComboBox>("Destination")->itemText(1), words("Selected Folder"));
}

TEST_F(Preferences, AChangeInAChipShowsHereAndTheReverse)
{
    ColorSettingsChip chip(m_settings);
    auto* toggle = find<QCheckBox>("Optimize color for sharing");
    chip.click();
    EXPECT_FALSE(toggle->isChecked());
    toggle->click();
    EXPECT_EQ(chip.text(), words("sRGB"));
}

TEST_F(Preferences, EveryToggleWritesItsOwnSetting)
{
    const std::pair<const char*, SettingValue<bool>*> toggles[] = {
        {"Optimize color for sharing", &m_settings.optimizeColorForSharing},
        {"Remove color management information", &m_settings.removeColorManagement},
        {"Remove personal information and metadata", &m_settings.removeMetadata},
        {"Move original to Trash", &m_settings.moveOriginalToTrash},
        {"Preserve file modification time", &m_settings.preserveModificationTime},
        {"Show warning before overwrite", &m_settings.warnBeforeOverwrite},
        {"Exit when optimization complete", &m_settings.exitWhenComplete},
        {"Quit when the last window is closed", &m_settings.quitWhenClosed},
    };
    for (const auto& [label, setting] : toggles) {
        const bool before = (*setting)();
        QTest::keyClick(find<QCheckBox>(label), Qt::Key_Space);
        EXPECT_EQ((*setting)(), !before) << label;
    }
}

TEST_F(Preferences, QualityRowIsDisabledForLosslessFormats)
{
    const std::pair<OutputFormat, bool> formats[] = {
        {OutputFormat::webp, true}, {OutputFormat::webpLossless, false}, {OutputFormat::jpeg, true},
        {OutputFormat::png, false}, {OutputFormat::heic, true},          {OutputFormat::original, true},
    };
    for (const auto& [format, enabled] : formats) {
        m_settings.outputFormat.set(format);
        EXPECT_EQ(find<QSlider>("Quality")->isEnabled(), enabled) << title(format);
    }
}

TEST_F(Preferences, QualitySliderStepsByOneBetweenOneAndAHundred)
{
    auto* slider = find<QSlider>("Quality");
    EXPECT_EQ(slider->minimum(), 1);
    EXPECT_EQ(slider->maximum(), 100);
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(m_settings.quality(), 83);
    EXPECT_EQ(row("Quality")->findChildren<StyledLabel*>().last()->text(), words("83"));
}

TEST_F(Preferences, AQualityBetweenStepsIsShownButNotRewritten)
{
    m_settings.quality.set(85.9);
    EXPECT_EQ(find<QSlider>("Quality")->value(), 85);
    EXPECT_EQ(m_settings.quality(), 85.9);
}

TEST_F(Preferences, MaximumRowIsDisabledWithoutResizing)
{
    m_settings.resizeMode.set(ResizeMode::none);
    EXPECT_FALSE(row("Maximum")->isEnabled());
    m_settings.resizeMode.set(ResizeMode::maxHeight);
    EXPECT_TRUE(row("Maximum")->isEnabled());
}

TEST_F(Preferences, StepperMovesBy64AndStopsAtItsEnds)
{
    auto* up = find<StepButton>("Increase Maximum");
    auto* down = find<StepButton>("Decrease Maximum");
    up->click();
    EXPECT_EQ(m_settings.maximumPixels(), 2624);
    m_settings.maximumPixels.set(11990);
    up->click();
    EXPECT_EQ(m_settings.maximumPixels(), 12000);
    EXPECT_FALSE(up->isEnabled());
    m_settings.maximumPixels.set(100);
    QTest::keyClick(find<QLineEdit>("Maximum"), Qt::Key_Down);
    EXPECT_EQ(m_settings.maximumPixels(), 64);
    EXPECT_FALSE(down->isEnabled());
}

TEST_F(Preferences, ATypedMaximumIsTakenOnlyWhenItIsAWholeNumber)
{
    auto* field = find<QLineEdit>("Maximum");
    EXPECT_EQ(field->placeholderText(), words("Pixels"));
    const std::pair<const char*, std::int64_t> typed[] = {
        {"1920", 1920}, {"12ab", 1920}, {"", 1920}, {"40.5", 1920}, {"50", 50}, {"99999999999999999999", 50}};
    for (const auto& [text, expected] : typed) {
        field->setText(words(text));
        QTest::keyClick(field, Qt::Key_Return);
        EXPECT_EQ(m_settings.maximumPixels(), expected) << text;
        EXPECT_EQ(field->text(), QString::number(expected));
    }
}

TEST_F(Preferences, NameFieldsRefuseTheSlash)
{
    auto* prefix = find<QLineEdit>("Prefix");
    auto* suffix = find<QLineEdit>("Suffix");
    QTest::keyClicks(prefix, words("a/b"));
    QTest::keyClicks(suffix, words("-small"));
    EXPECT_EQ(m_settings.filenamePrefix(), words("ab"));
    EXPECT_EQ(m_settings.filenameSuffix(), words("-small"));
    EXPECT_EQ(prefix->placeholderText(), words("Prefix"));
}

TEST_F(Preferences, FolderButtonWorksOnlyForASelectedFolder)
{
    auto* choose = find<StyledButton>("Choose Folder...");
    EXPECT_FALSE(choose->isEnabled());
    m_settings.destinationMode.set(DestinationMode::selectedFolder);
    EXPECT_TRUE(choose->isEnabled());
    m_chosen = m_objects.folder.path();
    choose->click();
    EXPECT_EQ(resolveFolderBookmark(m_settings.destinationFolderBookmark()), m_objects.folder.path());
}

TEST_F(Preferences, ShowTheChosenFolderOrThatThereIsNone)
{
    const auto* folder = m_view.findChild<ElidedLabel*>();
    EXPECT_EQ(folder->text(), QString());
    m_settings.destinationMode.set(DestinationMode::selectedFolder);
    EXPECT_EQ(folder->text(), words("No folder chosen yet"));
    m_chosen = m_objects.folder.path();
    m_view.chooseDestinationFolder();
    EXPECT_EQ(folder->text().toStdString(), m_objects.folder.path().string());
    m_settings.destinationMode.set(DestinationMode::originalLocation);
    EXPECT_EQ(folder->text(), QString());
}

TEST_F(Preferences, ACancelledOrVanishedFolderChangesNothing)
{
    m_settings.destinationFolderBookmark.set(*folderBookmark(m_objects.folder.path()));
    const QByteArray before = m_settings.destinationFolderBookmark();
    m_view.chooseDestinationFolder();
    m_chosen = m_objects.folder / "gone";
    m_view.chooseDestinationFolder();
    EXPECT_EQ(m_settings.destinationFolderBookmark(), before);
    EXPECT_EQ(m_settings.destinationMode(), DestinationMode::originalLocation);
}

TEST_F(Preferences, ResetButtonWorksOnceFilesWereProcessed)
{
    auto* reset = find<StyledButton>("Reset Lifetime Stats");
    EXPECT_FALSE(reset->isEnabled());
    m_objects.record(0, 0, false);
    EXPECT_TRUE(reset->isEnabled());
    reset->click();
    EXPECT_EQ(m_objects.stats.stats(), LifetimeStats());
    EXPECT_FALSE(reset->isEnabled());
}

TEST_F(Preferences, ResetNothingWhereTheUserThinksBetterOfIt)
{
    m_objects.record(2, 1);
    m_confirms = false;
    find<StyledButton>("Reset Lifetime Stats")->click();
    EXPECT_EQ(m_objects.stats.stats().filesProcessed, 1);
}

TEST_F(Preferences, ScrollByKeysBeforeAnythingIsClicked)
{
    m_view.resize(620, 500);
    m_view.activateWindow();
    QCoreApplication::processEvents();
    ASSERT_TRUE(m_view.window()->focusWidget());
    QTest::keyClick(m_view.window()->focusWidget(), Qt::Key_PageDown);
    EXPECT_GT(m_view.verticalScrollBar()->value(), 100);
    QTest::keyClick(m_view.window()->focusWidget(), Qt::Key_End);
    EXPECT_EQ(m_view.verticalScrollBar()->value(), m_view.verticalScrollBar()->maximum());
    QTest::keyClick(m_view.window()->focusWidget(), Qt::Key_Home);
    EXPECT_EQ(m_view.verticalScrollBar()->value(), 0);
}

TEST_F(Preferences, AskForAllThatWasDoneToBeForgotten)
{
    QSignalSpy requests(&m_view, &PreferencesView::forgetRequested);
    find<StyledButton>("Forget What Was Done")->click();
    EXPECT_EQ(requests.count(), 1);
}

TEST_F(Preferences, ScrollUnderAStripThatStaysForTheWindowsControls)
{
    m_view.resize(620, 500);
    QCoreApplication::processEvents();
    const auto strip = [this] { return m_view.grab(QRect(0, 0, 620, 42)).toImage(); };
    const QImage before = strip();
    m_view.verticalScrollBar()->setValue(200);
    EXPECT_EQ(strip(), before);
}

TEST_F(Preferences, ScrollingOverAPickerChangesNoSetting)
{
    auto* format = find<QComboBox>("Format");
    QWheelEvent wheel({5, 5}, format->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(format, &wheel);
    EXPECT_EQ(m_settings.outputFormat(), OutputFormat::webp);
}

TEST_F(Preferences, WriteInInkWhateverTheColoursOfTheDesktop)
{
    const QColor ink = TidewellTheme::ink();
    EXPECT_EQ(find<QLineEdit>("Maximum")->palette().color(QPalette::Text), ink);
    EXPECT_EQ(find<QComboBox>("Format")->palette().color(QPalette::ButtonText), ink);
}

TEST_F(Preferences, PickersAreOfOneWidth)
{
    const int width = find<QComboBox>("Format")->width();
    EXPECT_EQ(find<QComboBox>("Size")->width(), width);
    EXPECT_EQ(find<QComboBox>("Destination")->width(), width);
}

TEST_F(Preferences, GrowWithTheDesktopsTextScaleWhileTheyShow)
{
    auto* label = row("Format")->findChild<StyledLabel*>();
    fonts::install(*qApp, 2);
    EXPECT_TRUE(test::waitFor([&] { return label->width() == 224; }));
    EXPECT_EQ(find<QLineEdit>("Maximum")->width(), 180);
    EXPECT_EQ(label->font().pixelSize(), 26);
    fonts::install(*qApp, 1);
    EXPECT_TRUE(test::waitFor([&] { return label->width() == 112; }));
}

TEST(PreferencesVersion, ComesFromTheBundleOrReadsZero)
{
    test::TemporaryDirectory bundle;
    EXPECT_EQ(PreferencesView::appVersionText(bundle.path()), words("Version 0.0 (0)"));
    std::filesystem::create_directories(bundle / "Contents");
    std::ofstream(bundle / "Contents/Info.plist")
        << "<plist><dict><key>CFBundleShortVersionString</key><string>2.3</string>"
           "<key>CFBundleVersion</key><string>45</string></dict></plist>";
    EXPECT_EQ(PreferencesView::appVersionText(bundle.path()), words("Version 2.3 (45)"));
}

} // namespace
} // namespace lumora
