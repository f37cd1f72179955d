// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_sections.h"

#include "model/stats_store.h"
#include "ui/controls/elided_label.h"
#include "ui/controls/styled_button.h"
#include "ui/controls/styled_label.h"
#include "ui/settings/destination_text.h"
#include "ui/settings/pixel_field.h"
#include "ui/settings/preference_section.h"
#include "ui/settings/setting_controls.h"
#include "ui/statistics/lifetime_stats_grid.h"
#include "ui/theme/button_styles.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSlider>

namespace lumora {
namespace {

const QuietButtonStyle quietStyle;
const DestructiveButtonStyle destructiveStyle;

struct Toggle
{
    SettingValue<bool>& setting;
    const char* label;
    const char* help;
};

PreferenceSection* makeToggles(LumoraSettings& settings, const QString& title,
                               std::initializer_list<Toggle> toggles)
{
    auto* section = new PreferenceSection(title);
    for (const Toggle& toggle : toggles)
        section->addLeading(
            withHelp(makeToggle(settings, toggle.setting, QString::fromLatin1(toggle.label)), toggle.help));
    return section;
}

// Controls side by side that share the width of a row.
QWidget* rowOf(std::initializer_list<QWidget*> controls)
{
    auto* group = new QWidget;
    group->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    auto* row = new QHBoxLayout(group);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(8);
    for (QWidget* control : controls)
        row->addWidget(control);
    group->setFocusProxy(*controls.begin());
    return group;
}

FormRow* makeQualityRow(LumoraSettings& settings)
{
    auto* value = new FiguresLabel(
        QString(), [] { return fonts::systemFont(13, QFont::Normal); }, TidewellTheme::ink());
    value->setTrailingColumn(34);
    followSettings(settings, {settings.quality.key()}, value,
                   [&settings, value] { value->setText(QString::number(wholeQuality(settings.quality()))); });
    auto* slider = withHelp(makeQualitySlider(settings), "Higher keeps more detail and makes larger files");
    auto* row = new FormRow(QStringLiteral("Quality"), rowOf({slider, value}));
    followSettings(settings, {settings.outputFormat.key()}, row,
                   [&settings, row] { row->setEnabled(!isLosslessOnly(settings.outputFormat())); });
    return row;
}

FormRow* makeMaximumRow(LumoraSettings& settings)
{
    const QString label = QStringLiteral("Maximum");
    auto* row = new FormRow(label, new PixelField(settings, settings.maximumPixels, label));
    followSettings(settings, {settings.resizeMode.key()}, row,
                   [&settings, row] { row->setEnabled(settings.resizeMode() != ResizeMode::none); });
    return row;
}

ElidedLabel* makeFolderLabel(LumoraSettings& settings)
{
    auto* folder = new ElidedLabel([] { return fonts::systemFont(13, QFont::Normal); });
    followSettings(settings, {settings.destinationMode.key(), settings.destinationFolderBookmark.key()},
                   folder, [&settings, folder] {
                       const bool isLacking = lacksDestinationFolder(settings);
                       const bool isUsed = settings.destinationMode() == DestinationMode::selectedFolder;
                       folder->display(isUsed ? chosenFolderText(settings) : QString(),
                                       isLacking ? TidewellTheme::copperStrong() : TidewellTheme::ink());
                   });
    return folder;
}

template <class Enum>
FormRow* makePickerRow(LumoraSettings& settings, SettingValue<Enum>& setting, const char* label,
                       const char* help)
{
    const QString name = QString::fromLatin1(label);
    return new FormRow(name, withHelp(makePicker(settings, setting, name), help));
}

} // namespace

PreferenceSection* makeOutputSection(LumoraSettings& settings)
{
    auto* section = new PreferenceSection(QStringLiteral("Output"));
    section->add(
        makePickerRow(settings, settings.outputFormat, "Format", "The format that optimized files have"));
    section->add(makeQualityRow(settings));
    section->add(makePickerRow(settings, settings.resizeMode, "Size", "Which side of an image is limited"));
    section->add(makeMaximumRow(settings));
    return section;
}

PreferenceSection* makeOptimizationSection(LumoraSettings& settings)
{
    return makeToggles(
        settings, QStringLiteral("Optimization"),
        {{settings.optimizeColorForSharing, "Optimize color for sharing", "Converts the colors to sRGB"},
         {settings.removeColorManagement, "Remove color management information",
          "Leaves color profiles out of the output"},
         {settings.removeMetadata, "Remove personal information and metadata",
          "Leaves camera data, places and captions out of the output"}});
}

PreferenceSection* makeDestinationSection(LumoraSettings& settings, std::function<void()> chooseFolder)
{
    auto* section = new PreferenceSection(QStringLiteral("Destination"));
    section->add(makePickerRow(settings, settings.destinationMode, "Destination",
                               "Whether output lies beside its original or in one folder"));

    auto* choose =
        withHelp(new StyledButton(quietStyle, QStringLiteral("folder"), QStringLiteral("Choose Folder...")),
                 "Chooses the folder that output is written to");
    choose->setAccessibleName(choose->text());
    QObject::connect(choose, &QPushButton::clicked, choose, std::move(chooseFolder));
    followSettings(settings, {settings.destinationMode.key()}, choose, [&settings, choose] {
        choose->setEnabled(settings.destinationMode() == DestinationMode::selectedFolder);
    });
    section->add(new FormRow(QStringLiteral("Folder"), rowOf({choose, makeFolderLabel(settings)})));

    const auto field = [&](SettingValue<QString>& setting, const char* name, const char* help) {
        return withHelp(makeNameField(settings, setting, QString::fromLatin1(name)), help);
    };
    section->add(
        new FormRow(QStringLiteral("Filename"),
                    rowOf({field(settings.filenamePrefix, "Prefix", "Put before the name of the original"),
                           field(settings.filenameSuffix, "Suffix", "Put after the name of the original")})));
    return section;
}

PreferenceSection* makeMiscellaneousSection(LumoraSettings& settings)
{
    return makeToggles(
        settings, QStringLiteral("Miscellaneous"),
        {{settings.moveOriginalToTrash, "Move original to Trash",
          "Moves an original to the Trash once its output is written"},
         {settings.preserveModificationTime, "Preserve file modification time",
          "Gives the output the date of its original"},
         {settings.warnBeforeOverwrite, "Show warning before overwrite",
          "Asks before an existing file is replaced"},
         {settings.exitWhenComplete, "Exit when optimization complete",
          "Quits after the files that were opened with the application or dropped on its icon"},
         {settings.quitWhenClosed, "Quit when the last window is closed",
          "Otherwise the application goes on, and launching it again brings its window back"}});
}

PreferenceSection* makeLifetimeStatsSection(StatsStore& stats, std::function<bool()> confirm)
{
    auto* section = new PreferenceSection(QStringLiteral("Lifetime Stats"));
    section->add(new LifetimeStatsGrid(stats));
    auto* reset = withHelp(new StyledButton(destructiveStyle, QStringLiteral("arrow.counterclockwise"),
                                            QStringLiteral("Reset Lifetime Stats")),
                           "Sets all lifetime figures to zero");
    const auto refresh = [&stats, reset] { reset->setEnabled(stats.stats().filesProcessed != 0); };
    QObject::connect(reset, &QPushButton::clicked, &stats, [&stats, confirm = std::move(confirm)] {
        if (confirm()) stats.reset();
    });
    QObject::connect(&stats, &StatsStore::statsChanged, reset, refresh);
    refresh();
    section->addLeading(reset);
    return section;
}

PreferenceSection* makeSafetySection(LumoraSettings& settings, const std::function<void()>& forget)
{
    auto* section = makeToggles(
        settings, QStringLiteral("Safety and order"),
        {{settings.keepHistory, "Remember what was done",
          "Keeps a list of batches, so that they can be undone"},
         {settings.trashReplaced, "Move replaced files to Trash",
          "Keeps a file that an output replaces without a question, unless it is an earlier output"},
         {settings.skipOptimized, "Skip files that were optimized before",
          "Leaves earlier outputs alone, wherever they lie now"},
         {settings.onlySmaller, "Write smaller files only",
          "Keeps or copies an original whose output would not be smaller in its own format and size"},
         {settings.keepFolders, "Keep folders in the chosen folder",
          "Lays output out like the folders that were dropped"}});
    auto* button = withHelp(
        new StyledButton(destructiveStyle, QStringLiteral("trash"), QStringLiteral("Forget What Was Done")),
        "Empties the list of batches, after a question");
    QObject::connect(button, &QPushButton::clicked, section, forget);
    section->addLeading(button);
    return section;
}

} // namespace lumora
