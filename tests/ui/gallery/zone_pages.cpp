// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the drop window says around a batch: where its files go, how long it takes, how it ended, what failed.
#include "model/folder_bookmark.h"
#include "tests/ui/drop_window_objects.h"
#include "tests/ui/gallery/gallery.h"
#include "ui/controls/chip_button.h"
#include "ui/dropwindow/drop_window_view.h"
#include "ui/dropzone/drop_zone_picture.h"
#include "ui/results/results_list_model.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QApplication>
#include <QPainter>

#include <fstream>
#include <string_view>

namespace lumora::gallery {
namespace {

using Objects = test::DropWindowObjects;

void picturePages(const Gallery& gallery)
{
    const auto save = [&](const char* name, QSize size, auto change) {
        DropZonePicture picture;
        picture.iconName = QStringLiteral("arrow.triangle.2.circlepath");
        picture.status = QStringLiteral("Optimized 120 of 400");
        picture.progress = 0.3;
        picture.timeLeft = QStringLiteral("About 3 minutes left");
        change(picture);
        QImage image(size * gallery.scale(), QImage::Format_RGB32);
        image.setDevicePixelRatio(gallery.scale());
        image.fill(TidewellTheme::bgWarm());
        picture.area = QRect(QPoint(), size);
        QPainter painter(&image);
        picture.paint(painter);
        painter.end();
        gallery.save(image, QString::fromLatin1(name));
    };
    const QSize usual(776, 170);
    const QSize low(676, 104);
    save("zone-time-left", usual, [](auto&) {});
    save("zone-time-left-low", low, [](auto&) {});
    save("zone-time-left-slim", QSize(676, 36), [](auto&) {});
    save("zone-time-left-right-to-left", usual, [](auto& picture) { picture.direction = Qt::RightToLeft; });
    save("zone-hovered", usual, [](auto& picture) {
        picture = {};
        picture.iconName = QStringLiteral("square.and.arrow.down");
        picture.status = QStringLiteral("Drop images here");
        picture.hovered = true;
    });
}

void addMixture(Objects& objects)
{
    objects.addSuccess("/photos/beach.jpg", 6'200'000, 820'000, "Optimized");
    objects.addFailure("/photos/broken.heic", "The image could not be read.");
    objects.addSuccess("/photos/logo.png", 20'480, 21'480, "Converted");
    objects.addFailure("/photos/skip.png", "Skipped because the output file already exists.");
    objects.addFailure("/photos/Straßenverkehrs-Zulassungs-Ordnung.tiff", "The image could not be read.");
}

// Of three files, one of which lost its original since, two are taken back.
void addUndone(Objects& objects)
{
    objects.history = std::make_shared<History>(objects.folder / "history.sqlite");
    for (const char* name : {"beach.jpg", "harbour.jpg", "logo.png"}) {
        if (name != std::string_view("logo.png")) std::ofstream(objects.folder / name) << "x";
        objects.addSuccess(objects.folder / name, 6'200'000, 820'000, "Optimized");
    }
    const auto batches = objects.history->batches().value();
    std::vector<std::int64_t> files;
    for (const BatchSummary& batch : batches) {
        const auto ofBatch = objects.history->filesOf(batch.batch.id);
        for (const FileRecord& file : *ofBatch)
            files.push_back(file.id);
    }
    objects.model.undoFiles(std::move(files));
    test::waitFor([&] { return !objects.model.isProcessing(); });
}

ChipButton* chip(const DropWindowView& view, const QString& text)
{
    for (ChipButton* candidate : view.findChildren<ChipButton*>()) {
        if (candidate->text() == text) return candidate;
    }
    return nullptr;
}

void windowStates(const Gallery& gallery)
{
    const auto save = [&](const char* name, QSize size, auto prepare) {
        Objects objects;
        auto view = objects.makeView();
        view->resize(size);
        view->show();
        prepare(objects, *view);
        gallery.save(*view, QString::fromLatin1(name));
    };
    const QSize usual(820, 360);
    const QSize five(820, 414 + 58 * 5 + 44);
    const auto chooseFolder = [](Objects& objects, const std::string& name) {
        const auto folder = objects.folder / name;
        std::filesystem::create_directories(folder);
        objects.settings.destinationMode.set(DestinationMode::selectedFolder);
        objects.settings.destinationFolderBookmark.set(*folderBookmark(folder));
    };
    save("drop-hint-folder", usual, [&](Objects& objects, DropWindowView&) {
        chooseFolder(objects, "Web");
        objects.settings.moveOriginalToTrash.set(true);
    });
    save("drop-hint-long-folder", QSize(720, 320), [&](Objects& objects, DropWindowView&) {
        chooseFolder(objects, "Veröffentlichungen/Donaudampfschifffahrtsgesellschaft/Sommerfahrten 2026");
    });
    save("drop-hint-no-folder", usual, [](Objects& objects, DropWindowView&) {
        objects.settings.destinationMode.set(DestinationMode::selectedFolder);
    });
    save("drop-hint-right-to-left", usual, [&](Objects& objects, DropWindowView& view) {
        view.setLayoutDirection(Qt::RightToLeft);
        chooseFolder(objects, "صور الصيف");
    });
    save("drop-paused", QSize(820, 516), [](Objects& objects, DropWindowView&) {
        objects.runUntil(1, 8);
        objects.model.setPaused(true);
    });
    save("drop-ended", five, [](Objects& objects, DropWindowView&) {
        objects.answers.insert_or_assign("/photos/b.png",
                                         ProcessingResult("/photos/b.png", std::nullopt, 0, 0, "no", false));
        objects.model.process({"/photos/a.png", "/photos/b.png", "/photos/c.png"});
        test::waitFor([&] { return objects.model.resultCount() == 3 && !objects.model.isProcessing(); });
    });
    save("drop-controls", five, [](Objects& objects, DropWindowView&) { addMixture(objects); });
    save("drop-controls-narrow", QSize(720, 640),
         [](Objects& objects, DropWindowView&) { addMixture(objects); });
    save("drop-controls-long", five, [](Objects& objects, DropWindowView& view) {
        addMixture(objects);
        ChipButton* retry = chip(view, QStringLiteral("Try Again"));
        retry->display(retry->systemName(), QStringLiteral("Fehlgeschlagene Dateien noch einmal versuchen"));
    });
    save("drop-failures", five, [](Objects& objects, DropWindowView& view) {
        addMixture(objects);
        chip(view, QStringLiteral("2 failed"))->click();
        chip(view, QStringLiteral("2 failed"))->setFocus();
    });
    save("drop-failures-right-to-left", five, [](Objects& objects, DropWindowView& view) {
        view.setLayoutDirection(Qt::RightToLeft);
        addMixture(objects);
        objects.addSuccess("/photos/صورة البحر.jpg", 6'200'000, 820'000, "Optimized");
        chip(view, QStringLiteral("Newest"))->setFocus();
    });
    save("drop-undone", five, [](Objects& objects, DropWindowView&) { addUndone(objects); });
    save("drop-undone-right-to-left", five, [](Objects& objects, DropWindowView& view) {
        view.setLayoutDirection(Qt::RightToLeft);
        addUndone(objects);
    });
    fonts::install(*qApp, 2);
    save("drop-controls-largest-text", QSize(900, 1200),
         [](Objects& objects, DropWindowView&) { addMixture(objects); });
    fonts::install(*qApp, 1);
}

} // namespace

void zonePages(const Gallery& gallery)
{
    picturePages(gallery);
    windowStates(gallery);
}

} // namespace lumora::gallery
