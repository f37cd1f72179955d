// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/intake/files_and_folders_dialog.h"

#include "types/format.h"
#include "ui/theme/fonts.h"

#include <QAbstractItemView>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QStandardPaths>
#include <QTreeView>

namespace lumora {
namespace {

QString imageFilter()
{
    QStringList patterns;
    for (const Format* format : formats()) {
        for (const std::string_view extension : format->extensions)
            patterns << QStringLiteral("*.") + QLatin1String(extension.data(), qsizetype(extension.size()));
    }
    return QStringLiteral("Images and folders (%1)").arg(patterns.join(u' '));
}

// A folder that is not there would be offered as a name to open.
QString firstFolder()
{
    const QString pictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return QFileInfo(pictures).isDir() ? pictures : QDir::homePath();
}

QAbstractItemView* entries(const QFileDialog& dialog)
{
    return dialog.findChild<QAbstractItemView*>(QStringLiteral("listView"));
}

} // namespace

void makeRoomy(QFileDialog& panel)
{
    const auto* details = panel.findChild<QTreeView*>(QStringLiteral("treeView"));
    if (!details) return;
    panel.resize(840, 520);
    QHeaderView& columns = *details->header();
    columns.setSectionResizeMode(0, QHeaderView::Stretch);
    const int widths[] = {80, 130, 170}; // of size, type and date
    for (int i = 0; i < 3; ++i)
        columns.resizeSection(i + 1, fonts::scaled(widths[i]));
}

FilesAndFoldersDialog::FilesAndFoldersDialog(QWidget* parent)
    : QFileDialog(parent, QStringLiteral("Choose Images or Folders"), firstFolder(), imageFilter())
{
    setOption(DontUseNativeDialog);
    setOption(HideNameFilterDetails);
    setFileMode(ExistingFiles);
    makeRoomy(*this);
    if (QAbstractItemView* view = entries(*this)) {
        connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
                &FilesAndFoldersDialog::nameSelection);
    }
    connect(this, &QFileDialog::directoryEntered, this, [this] { findChild<QLineEdit*>()->clear(); });
}

// The base class leaves selected folders out of the field of names, and what is not named there is not
// chosen.
void FilesAndFoldersDialog::nameSelection()
{
    QStringList names;
    for (const QModelIndex& index : entries(*this)->selectionModel()->selectedRows())
        names << index.data().toString();
    // A name that the user writes is his: what matches it is selected while he does.
    if (names.isEmpty() || findChild<QLineEdit*>()->hasFocus()) return;
    const QString separator = QStringLiteral("\" \"");
    findChild<QLineEdit*>()->setText(names.size() == 1 ? names.first() : u'"' + names.join(separator) + u'"');
}

// Who writes a folder's name and presses Return wants to see into it; "/" would choose the whole disk.
bool FilesAndFoldersDialog::enterTypedFolder()
{
    auto* field = findChild<QLineEdit*>();
    const QStringList files = selectedFiles();
    if (!field->hasFocus() || files.size() != 1 || !QFileInfo(files.first()).isDir()) return false;
    setDirectory(files.first());
    field->clear();
    return true;
}

// The base class enters a folder instead of choosing it.
void FilesAndFoldersDialog::accept()
{
    if (enterTypedFolder()) return;
    const QStringList files = selectedFiles();
    for (const QString& file : files) {
        if (!QFile::exists(file)) return QFileDialog::accept();
    }
    if (files.isEmpty()) return;
    // NOLINTNEXTLINE(bugprone-parent-virtual-call): the parent's would enter a folder
    QDialog::accept();
    Q_EMIT filesSelected(files);
}

namespace {

void openFor(QFileDialog* dialog, QWidget* parent, ChosenFiles chosen)
{
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QFileDialog::filesSelected, parent,
                     [chosen = std::move(chosen)](const QStringList& files) {
                         std::vector<std::filesystem::path> paths;
                         for (const QString& file : files)
                             paths.emplace_back(QFile::encodeName(file).toStdString());
                         chosen(std::move(paths));
                     });
    dialog->open();
}

} // namespace

void chooseFilesAndFolders(QWidget* parent, ChosenFiles chosen)
{
    openFor(new FilesAndFoldersDialog(parent), parent, std::move(chosen));
}

void choosePlatformFiles(QWidget* parent, bool folders, ChosenFiles chosen)
{
    auto* dialog =
        new QFileDialog(parent, folders ? QStringLiteral("Choose Folders") : QStringLiteral("Choose Images"),
                        firstFolder(), imageFilter());
    dialog->setFileMode(folders ? QFileDialog::Directory : QFileDialog::ExistingFiles);
    dialog->setOption(QFileDialog::ShowDirsOnly, folders);
    openFor(dialog, parent, std::move(chosen));
}

} // namespace lumora
