// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/ui/drop_window_objects.h"
#include "tests/ui/gallery/gallery.h"
#include "ui/dropwindow/drop_window_view.h"
#include "ui/dropzone/drop_zone.h"
#include "ui/results/results_list_view.h"
#include "ui/settings/settings_chip.h"
#include "ui/theme/fonts.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QHoverEvent>
#include <QMimeData>

namespace lumora::gallery {
namespace {

const QSize usual(820, 360);

QSize sizeFor(int results)
{
    return {820, results == 0 ? 360 : 414 + 58 * std::min(results, 8) + 44};
}

void target(DropWindowView& view)
{
    QMimeData files;
    files.setData(QStringLiteral("text/uri-list"), "file:///a.png\r\n");
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &files, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(view.findChild<DropZone*>(), &enter);
}

void mixedResults(test::DropWindowObjects& objects)
{
    objects.addFailure("/photos/broken.heic", "The image could not be read.");
    objects.addSuccess("/photos/Screenshot 2026-01-14 at 09.12.44.png", 4'812'334, 611'920, "Optimized");
    objects.addSuccess("/photos/already-small.jpg", 181'004, 204'771, "Converted");
    objects.addSuccess("/photos/logo.png", 20'480, 20'480, "Converted");
    objects.addSuccess("/photos/DSC_0001.JPG", 17'900'000, 2'310'555, "Optimized");
    objects.addFailure(
        "/photos/panorama.tiff",
        "Could not finish writing panorama.webp: the encoder said that the picture is too large\n"
        "in one of its dimensions (the limit is 16383)\nand gave up.");
    objects.addSuccess("/photos/IMG_4711.HEIC", 2'114'001, 1'702'339,
                       "Optimized. Could not move the original to the Trash.");
    objects.addFailure("/photos/skip.png", "Skipped because the output file already exists.");
    objects.addSuccess(
        "/photos/Donaudampfschifffahrtsgesellschaftskapitänsmützenabzeichen-in-sehr-langer-Ausführung-"
        "und-noch-viel-länger-als-jedes-Fenster-breit-ist-Fassung-7.png",
        48'200'000, 9'100'000, "Optimized");
    objects.addSuccess("/photos/scan.bmp", 36'000'054, 1'250'000, "Optimized");
    objects.addSuccess("/photos/beach.jpg", 6'200'000, 820'000, "Optimized");
    objects.addSuccess("/photos/b\xFF.gif", 900'000, 310'000, "Optimized");
}

} // namespace

void dropWindowPages(const Gallery& gallery)
{
    const auto save = [&](const char* name, QSize size, auto prepare) {
        test::DropWindowObjects objects;
        auto view = objects.makeView();
        view->resize(size);
        view->show();
        prepare(objects, *view);
        gallery.save(*view, QString::fromLatin1(name));
    };
    using Objects = test::DropWindowObjects;
    save("drop-empty", usual, [](Objects&, DropWindowView&) {});
    save("drop-empty-least", QSize(720, 320), [](Objects&, DropWindowView&) {});
    save("drop-targeted", usual, [](Objects&, DropWindowView& view) { target(view); });
    save("drop-processing", sizeFor(3), [](Objects& objects, DropWindowView&) { objects.runUntil(3, 8); });
    save("drop-focus", usual,
         [](Objects&, DropWindowView& view) { view.findChild<DropZone*>()->setFocus(); });
    save("drop-one", sizeFor(1), [](Objects& objects, DropWindowView&) {
        objects.addSuccess("/photos/beach.jpg", 6'200'000, 820'000, "Optimized");
    });
    save("drop-failure", sizeFor(1), [](Objects& objects, DropWindowView&) {
        objects.addFailure("/photos/broken.heic", "The image could not be read.");
    });
    save("drop-growth", sizeFor(1), [](Objects& objects, DropWindowView&) {
        objects.addSuccess("/photos/small.jpg", 181'004, 204'771, "Converted");
    });
    save("drop-twelve", sizeFor(12), [](Objects& objects, DropWindowView& view) {
        mixedResults(objects);
        auto* list = view.findChild<ResultsListView*>();
        list->setCurrentIndex(list->model()->index(1, 0));
        list->setFocus();
    });
    save("drop-long-text", QSize(720, 420), [](Objects& objects, DropWindowView& view) {
        objects.settings.outputFormat.set(OutputFormat::original);
        objects.settings.removeMetadata.set(false);
        objects.settings.optimizeColorForSharing.set(false);
        const auto chips = view.findChildren<SettingsChip*>();
        chips[0]->display(QStringLiteral("photo"), QStringLiteral("Ursprüngliches Dateiformat"));
        chips[1]->display(QStringLiteral("aspectratio"), QStringLiteral("Größe nicht verändern"));
        chips[3]->display(QStringLiteral("doc.badge.gearshape"),
                          QStringLiteral("Personenbezogene Angaben behalten"));
    });
    save("drop-processing-right-to-left", QSize(720, 360), [](Objects& objects, DropWindowView& view) {
        view.setLayoutDirection(Qt::RightToLeft);
        objects.runUntil(0, 8);
    });
    save("drop-twelve-narrow", QSize(720, 640),
         [](Objects& objects, DropWindowView&) { mixedResults(objects); });
    save("drop-twelve-least", QSize(720, 320),
         [](Objects& objects, DropWindowView&) { mixedResults(objects); });
    save("drop-twelve-wide", QSize(1500, 1100),
         [](Objects& objects, DropWindowView&) { mixedResults(objects); });
    save("drop-twelve-right-to-left", sizeFor(12), [](Objects& objects, DropWindowView& view) {
        view.setLayoutDirection(Qt::RightToLeft);
        mixedResults(objects);
    });
    fonts::install(*qApp, 1.5);
    save("drop-twelve-large-text", QSize(1000, 1100),
         [](Objects& objects, DropWindowView&) { mixedResults(objects); });
    save("drop-empty-large-text", usual, [](Objects&, DropWindowView&) {});
    fonts::install(*qApp, 1);
}

} // namespace lumora::gallery
