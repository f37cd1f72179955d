// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/panels/history_questions.h"
#include "tests/support/temporary_directory.h"
#include "tests/ui/gallery/gallery.h"
#include "ui/controls/message_dialog.h"
#include "ui/controls/styled_button.h"
#include "ui/intake/files_and_folders_dialog.h"
#include "ui/theme/button_styles.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QTest>
#include <QTimer>

#include <fstream>

namespace lumora::gallery {

namespace {

const CopperButtonStyle copperStyle;
const QuietButtonStyle quietStyle;

void questionPage(const Gallery& gallery, const QString& name, Qt::LayoutDirection direction,
                  const QString& file)
{
    MessageDialog question(QStringLiteral("Replace %1?").arg(file),
                           QStringLiteral("A file with this name already exists."));
    question.setLayoutDirection(direction);
    question.addDetail(QStringLiteral("In /home/user/Pictures/Holidays"));
    question.addButton(copperStyle, QStringLiteral("Replace"));
    question.addButton(quietStyle, QStringLiteral("Skip"));
    auto* cancel = question.addLeadingButton(quietStyle, QStringLiteral("Cancel Batch"));
    auto* forRemaining = new QCheckBox(QStringLiteral("Do the same for the remaining files"));
    question.addControl(forRemaining);
    gallery.save(question, name);
    if (direction == Qt::RightToLeft) return;
    cancel->setFocus();
    gallery.save(question, name + QStringLiteral("-focus-quiet"));
    forRemaining->setFocus();
    gallery.save(question, name + QStringLiteral("-focus-check-box"));
}

void questionPages(const Gallery& gallery)
{
    questionPage(gallery, QStringLiteral("question"), Qt::LeftToRight, QStringLiteral("beach.webp"));
    questionPage(gallery, QStringLiteral("question-right-to-left"), Qt::RightToLeft,
                 QStringLiteral("beach.webp"));
    questionPage(gallery, QStringLiteral("question-long-name"), Qt::LeftToRight,
                 QStringLiteral("Donaudampfschifffahrtsgesellschaftskapitän").repeated(3));
    questionPage(gallery, QStringLiteral("question-arabic"), Qt::RightToLeft,
                 QStringLiteral("صورة البحر في الصيف.webp"));
}

// They ask by themselves: each is saved and closed when it is there.
void historyQuestionPages(const Gallery& gallery)
{
    const auto saveNext = [&](const char* name) {
        QTimer::singleShot(0, qApp, [&gallery, name] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            gallery.save(*dialog, QString::fromLatin1(name));
            dialog->reject();
        });
    };
    saveNext("question-undo");
    BatchSummary batch;
    batch.batch = {1, 1'768'382'000, "lumora",
                   "WebP Lossy, quality 82, at most 2560 wide, sRGB, without metadata"};
    batch.written = 21;
    confirmUndo(batch, WhichBatch::last, nullptr);
    saveNext("question-undo-files");
    confirmUndo(21, nullptr);
    saveNext("question-forget");
    confirmForgetting(nullptr);
    saveNext("message-nothing-to-undo");
    tellNothingToUndo(nullptr);
    saveNext("message-history-unusable");
    tellHistoryUnusable(nullptr);
}

} // namespace

void dialogPages(const Gallery& gallery)
{
    questionPages(gallery);
    historyQuestionPages(gallery);
    test::TemporaryDirectory folder;
    std::filesystem::create_directory(folder / "album");
    for (const char* name : {"beach.jpg", "logo.png", "scan.tiff"})
        std::ofstream(folder / name) << "x";
    FilesAndFoldersDialog dialog;
    dialog.setDirectory(QString::fromStdString(folder.path().string()));
    dialog.show();
    const auto* list = dialog.findChild<QAbstractItemView*>(QStringLiteral("listView"));
    if (!QTest::qWaitFor([&] { return list->model()->rowCount(list->rootIndex()) == 4; })) return;
    list->selectionModel()->select(list->model()->index(1, 0, list->rootIndex()),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    gallery.save(dialog, QStringLiteral("chooser"));
}

} // namespace lumora::gallery
