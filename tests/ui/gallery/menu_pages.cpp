// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/drop_window_objects.h"
#include "tests/ui/gallery/gallery.h"
#include "ui/dropzone/batch_controls.h"
#include "ui/results/results_controls.h"
#include "ui/results/results_list_view.h"
#include "ui/settings/preferences_view.h"
#include "ui/settings/settings_chips.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>

namespace lumora::gallery {
namespace {

// Opens the menu with its item of this number under the pointer.
void save(const Gallery& gallery, QMenu& menu, qsizetype item, const char* name)
{
    menu.popup(QPoint(0, 0));
    menu.setActiveAction(menu.actions().value(item));
    gallery.save(menu, QString::fromLatin1(name));
    menu.close();
}

void chipMenus(const Gallery& gallery, LumoraSettings& settings)
{
    FormatSettingsChip format(settings);
    ResizeSettingsChip resize(settings);
    QualitySettingsChip quality(settings);
    save(gallery, *format.menu(), 2, "menu-format");
    save(gallery, *resize.menu(), 2, "menu-resize");
    save(gallery, *quality.menu(), 2, "menu-quality");
    format.menu()->setLayoutDirection(Qt::RightToLeft);
    save(gallery, *format.menu(), 2, "menu-format-right-to-left");
    settings.outputFormat.set(OutputFormat::webpLossless);
    save(gallery, *quality.menu(), 0, "menu-quality-lossless");
}

void rowMenus(const Gallery& gallery, test::DropWindowObjects& objects)
{
    objects.addSuccess("/photos/beach.jpg", 6'200'000, 820'000, "Optimized");
    objects.addFailure("/photos/broken.heic", "The image could not be read.");
    const auto view = objects.makeView();
    auto* list = view->findChild<ResultsListView*>();
    save(gallery, *list->makeContextMenu(list->model()->index(0, 0)), 3, "menu-row-failure");
    save(gallery, *list->makeContextMenu(list->model()->index(1, 0)), 0, "menu-row");
}

void batchMenus(const Gallery& gallery)
{
    test::DropWindowObjects objects;
    objects.runUntil(1, 4);
    const auto view = objects.makeView();
    save(gallery, *view->findChild<BatchControls*>()->makeMenu(), 0, "menu-batch");
    save(gallery, *view->findChild<ResultsControls*>()->findChild<QMenu*>(), 2, "menu-sort");
}

void fieldMenu(const Gallery& gallery, test::DropWindowObjects& objects)
{
    PreferencesView view(objects.settings, objects.stats);
    auto* field = view.findChild<QLineEdit*>();
    const std::unique_ptr<QMenu> menu(field->createStandardContextMenu());
    save(gallery, *menu, 3, "menu-field");
}

void pickerMenus(const Gallery& gallery, test::DropWindowObjects& objects)
{
    PreferencesView view(objects.settings, objects.stats);
    view.show();
    for (QComboBox* picker : view.findChildren<QComboBox*>()) {
        picker->showPopup();
        gallery.save(*picker->view()->window(), QStringLiteral("picker-") + picker->accessibleName());
        picker->hidePopup();
    }
}

} // namespace

void menuPages(const Gallery& gallery)
{
    test::DropWindowObjects objects;
    rowMenus(gallery, objects);
    batchMenus(gallery);
    fieldMenu(gallery, objects);
    pickerMenus(gallery, objects);
    chipMenus(gallery, objects.settings);
}

} // namespace lumora::gallery
