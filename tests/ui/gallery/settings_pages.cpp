// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/folder_bookmark.h"
#include "tests/ui/gallery/gallery.h"
#include "tests/ui/model_objects.h"
#include "ui/controls/link_button.h"
#include "ui/controls/styled_button.h"
#include "ui/settings/preferences_view.h"
#include "ui/settings/settings_chip.h"
#include "ui/settings/settings_chip_group.h"
#include "ui/statistics/lifetime_stats_strip.h"
#include "ui/theme/button_styles.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_logo_mark.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QPainter>
#include <QScrollBar>
#include <QSlider>
#include <QVBoxLayout>

namespace lumora::gallery {
namespace {

const CopperButtonStyle copperStyle;
const QuietButtonStyle quietStyle;

// The ground of the drop window behind whatever a page shows.
class Ground : public QWidget
{
public:
    Ground() : stack(new QVBoxLayout(this)) { stack->setContentsMargins(22, 22, 22, 22); }

    QVBoxLayout* const stack;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter(this).fillRect(rect(), windowGradient(rect(), layoutDirection()));
    }
};

using Objects = test::ModelObjects;

void addResults(Objects& objects)
{
    objects.record(48'200'000, 9'100'000);
    objects.record(1'200'000, 1'350'000);
    objects.record(0, 0, false);
}

void chipPages(const Gallery& gallery)
{
    Objects objects;
    Ground ground;
    ground.stack->addWidget(new TidewellLogoMark(std::filesystem::path(LUMORA_BUNDLE_DIR)));
    ground.stack->addWidget(new TidewellLogoMark(objects.folder.path()));
    auto* group = new SettingsChipGroup(objects.settings);
    ground.stack->addWidget(group);
    ground.resize(620, 400);
    auto* strip = new LifetimeStatsStrip(objects.stats);
    ground.stack->addWidget(strip);
    ground.stack->addWidget(new TidewellLink);
    ground.stack->addWidget(new TidewellLink(true));
    ground.stack->addWidget(new BuyMeACoffeeLink);
    auto* gear = new StyledButton(quietStyle, QStringLiteral("gearshape"), QString());
    ground.stack->addWidget(gear);
    ground.stack->addWidget(new StyledButton(copperStyle, QString(), QStringLiteral("Allow Folder")));
    ground.stack->addStretch();
    gallery.save(ground, QStringLiteral("chips"));
    addResults(objects);
    objects.settings.outputFormat.set(OutputFormat::png);
    objects.settings.resizeMode.set(ResizeMode::none);
    objects.settings.removeMetadata.set(false);
    objects.settings.optimizeColorForSharing.set(false);
    group->findChildren<SettingsChip*>().at(1)->setFocus();
    gallery.save(ground, QStringLiteral("chips-lossless"));
    group->findChildren<SettingsChip*>().at(0)->display(
        QStringLiteral("photo"), QStringLiteral("Verlustfreies Ausgabeformat mit langem Namen"));
    group->findChildren<SettingsChip*>().at(3)->display(
        QStringLiteral("trash"), QStringLiteral("Personenbezogene Bildinformationen entfernen"));
    gallery.save(ground, QStringLiteral("chips-long"));
    ground.setLayoutDirection(Qt::RightToLeft);
    gallery.save(ground, QStringLiteral("chips-right-to-left"));
}

void preferencesPages(const Gallery& gallery)
{
    Objects objects;
    const auto save = [&](const char* name, QSize size, auto change) {
        PreferencesView view(objects.settings, objects.stats);
        view.resize(size);
        change(view);
        gallery.save(view, QString::fromLatin1(name));
    };
    const QSize usual(620, 840);
    save("preferences", usual, [](auto&) {});
    addResults(objects);
    save("preferences-end", usual, [](PreferencesView& view) {
        view.show();
        QCoreApplication::processEvents();
        view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    });
    objects.settings.destinationMode.set(DestinationMode::selectedFolder);
    objects.settings.filenamePrefix.set(QStringLiteral("web-"));
    objects.settings.outputFormat.set(OutputFormat::png);
    objects.settings.resizeMode.set(ResizeMode::none);
    save("preferences-no-folder", usual, [](auto&) {});
    const auto folder = objects.folder / "Donaudampfschifffahrtsgesellschaft/Sommerfahrten 2026/Web";
    std::filesystem::create_directories(folder);
    objects.settings.destinationFolderBookmark.set(*folderBookmark(folder));
    save("preferences-lossless", QSize(620, 1040), [](PreferencesView& view) {
        view.show();
        view.findChildren<QComboBox*>().at(0)->setFocus();
    });
    save("preferences-focus", QSize(620, 1040), [](PreferencesView& view) {
        view.show();
        view.findChildren<QCheckBox*>().at(1)->setFocus();
    });
    save("preferences-focus-slider", QSize(620, 400), [&objects](PreferencesView& view) {
        objects.settings.outputFormat.set(OutputFormat::webp);
        view.show();
        view.findChild<QSlider*>()->setFocus();
    });
    save("preferences-right-to-left", QSize(760, 1040),
         [](PreferencesView& view) { view.setLayoutDirection(Qt::RightToLeft); });
    fonts::install(*qApp, 1.5);
    save("preferences-large-text", QSize(760, 1240), [](auto&) {});
    fonts::install(*qApp, 1);
}

} // namespace

void settingsPages(const Gallery& gallery)
{
    chipPages(gallery);
    preferencesPages(gallery);
}

} // namespace lumora::gallery
