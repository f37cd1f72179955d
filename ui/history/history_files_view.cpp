// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_files_view.h"

#include "ui/controls/path_text.h"
#include "ui/controls/row_painting.h"
#include "ui/history/history_file_row.h"
#include "ui/history/history_files_model.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace lumora {
namespace {

// What there is to see of a row: its output, unless that has gone and the original has not.
const std::filesystem::path& shownPath(const FileRecord& file, const std::optional<FilePlaces>& places)
{
    const auto isHere = [](std::optional<Whereabouts> place) {
        return place == Whereabouts::there || place == Whereabouts::changed;
    };
    const bool isOnlyOriginal = places && !isHere(places->output) && isHere(places->original);
    return file.output && !isOnlyOriginal ? *file.output : file.source;
}

bool canBeUndone(const FoundFile& file)
{
    return file.hasOutput && !file.isUndone;
}

} // namespace

HistoryFilesView::HistoryFilesView(HistoryFilesModel& files, FileBrowser fileBrowser, When when,
                                   QWidget* parent)
    : HistoryRowsView(parent), m_files(files), m_fileBrowser(std::move(fileBrowser)), m_when(std::move(when))
{
    setModel(&files);
    setSelectionMode(ExtendedSelection);
    setAccessibleName(QStringLiteral("Files"));
    setAccessibleDescription(QStringLiteral("Return shows the file in its folder, Space compares it with its "
                                            "original, Ctrl+U undoes what is chosen"));
    connect(&files, &QAbstractItemModel::modelReset, this, &HistoryFilesView::actionsChanged);
    connect(&files, &QAbstractItemModel::dataChanged, this, &HistoryFilesView::actionsChanged);
}

int HistoryFilesView::rowHeight() const
{
    return HistoryFileRow::height();
}

void HistoryFilesView::setCanUndo(bool canUndo)
{
    m_canUndo = canUndo;
    Q_EMIT actionsChanged();
}

bool HistoryFilesView::canShowInFolder() const
{
    return currentIndex().isValid() && m_fileBrowser.showInFolder;
}

bool HistoryFilesView::canCompare() const
{
    return currentIndex().isValid() && m_files.isComparable(currentIndex());
}

bool HistoryFilesView::canUndo() const
{
    if (!m_canUndo) return false;
    const QItemSelection chosen = selectionModel()->selection();
    return std::ranges::any_of(chosen, [this](const QItemSelectionRange& range) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            if (canBeUndone(m_files.found(m_files.index(row)))) return true;
        }
        return false;
    });
}

void HistoryFilesView::showInFolder()
{
    const FileRecord* file = canShowInFolder() ? m_files.record(currentIndex()) : nullptr;
    if (file) m_fileBrowser.showInFolder(shownPath(*file, m_files.places(currentIndex())));
}

void HistoryFilesView::compare()
{
    if (canCompare()) Q_EMIT compareRequested(currentIndex());
}

void HistoryFilesView::undo()
{
    if (!canUndo()) return;
    std::vector<std::int64_t> files;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const FoundFile& file = m_files.found(m_files.index(row));
            if (canBeUndone(file)) files.push_back(file.id);
        }
    }
    Q_EMIT undoRequested(files);
}

void HistoryFilesView::copyPath()
{
    const FileRecord* file = currentIndex().isValid() ? m_files.record(currentIndex()) : nullptr;
    if (file)
        QGuiApplication::clipboard()->setText(pathText(shownPath(*file, m_files.places(currentIndex()))));
}

// The row under the pointer is the current one by then.
QMenu* HistoryFilesView::makeContextMenu(const QModelIndex& index)
{
    if (!selectionModel()->isSelected(index)) setCurrentIndex(index);
    const FileRecord* file = m_files.record(index);
    auto* menu = new QMenu(this);
    const auto add = [menu](const QString& text, bool enabled, auto&& action) {
        menu->addAction(text, menu, action)->setEnabled(enabled);
    };
    add(QStringLiteral("Show in Folder"), canShowInFolder(), [this] { showInFolder(); });
    add(QStringLiteral("Open"), file && m_fileBrowser.open, [this, row = QPersistentModelIndex(index)] {
        if (const FileRecord* opened = row.isValid() ? m_files.record(row) : nullptr)
            m_fileBrowser.open(shownPath(*opened, m_files.places(row)));
    });
    add(QStringLiteral("Compare"), canCompare(), [this] { compare(); });
    add(QStringLiteral("Undo"), canUndo(), [this] { undo(); });
    menu->addSeparator();
    add(QStringLiteral("Copy Path"), file, [this] { copyPath(); });
    return menu;
}

void HistoryFilesView::paintRow(QPainter& painter, const QModelIndex& index,
                                const QStyleOptionViewItem& option) const
{
    paintRowGround(painter, option, index.row() == m_files.rowCount() - 1);
    if (const FileRecord* file = m_files.record(index))
        HistoryFileRow{*file, m_files.places(index), m_when(m_files.found(index))}.paint(painter, option);
}

// After the painting, which must not change what is painted.
void HistoryFilesView::rowsPainted(int first, int last)
{
    QTimer::singleShot(0, this, [this, first, last] { m_files.wantRows(first, last); });
}

void HistoryFilesView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    HistoryRowsView::selectionChanged(selected, deselected);
    Q_EMIT actionsChanged();
}

// The row that the keyboard comes to has the focus ring and would not be chosen yet.
void HistoryFilesView::focusInEvent(QFocusEvent* event)
{
    HistoryRowsView::focusInEvent(event);
    const Qt::FocusReason reason = event->reason();
    const bool isByKeyboard =
        reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason || reason == Qt::OtherFocusReason;
    if (isByKeyboard && !selectionModel()->hasSelection()) setCurrentIndex(currentIndex());
}

void HistoryFilesView::keyPressEvent(QKeyEvent* event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn) return showInFolder();
    if (event->key() == Qt::Key_Space && event->modifiers() == Qt::NoModifier) {
        if (!event->isAutoRepeat()) compare();
        return;
    }
    if (event->modifiers() == Qt::ControlModifier && event->key() == Qt::Key_U) return undo();
    if (event->matches(QKeySequence::Copy)) return copyPath();
    HistoryRowsView::keyPressEvent(event);
}

void HistoryFilesView::mouseDoubleClickEvent(QMouseEvent* event)
{
    HistoryRowsView::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton && indexAt(event->position().toPoint()).isValid()) compare();
}

} // namespace lumora
