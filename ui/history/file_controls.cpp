// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/file_controls.h"

#include "ui/controls/chip_button.h"
#include "ui/history/history_files_view.h"

#include <QEvent>
#include <QHBoxLayout>

namespace lumora {
namespace {

constexpr int gap = 6;

} // namespace

FileControls::FileControls(HistoryFilesView& files, QWidget* parent)
    : QWidget(parent), m_files(files),
      m_show(addChip("folder", "Show in Folder", "Show the file in its folder (Return)")),
      m_compare(addChip("photo.on.rectangle.angled", "Compare", "Compare it with its original (Space)")),
      m_undo(addChip("arrow.counterclockwise", "Undo", "Take back what was done to these files (Ctrl+U)"))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    row->addWidget(m_show);
    row->addWidget(m_compare);
    row->addStretch();
    row->addWidget(m_undo);
    m_undo->setAccessibleName(QStringLiteral("Undo files"));
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    connect(m_show, &QAbstractButton::clicked, &files, &HistoryFilesView::showInFolder);
    connect(m_compare, &QAbstractButton::clicked, &files, &HistoryFilesView::compare);
    connect(m_undo, &QAbstractButton::clicked, &files, &HistoryFilesView::undo);
    connect(&files, &HistoryFilesView::actionsChanged, this, &FileControls::refresh);
    refresh();
}

ChipButton* FileControls::addChip(const char* symbol, const char* text, const char* helpText)
{
    auto* chip = new ChipButton(QLatin1String(helpText), this);
    chip->display(QLatin1String(symbol), QLatin1String(text));
    return chip;
}

void FileControls::refresh()
{
    m_show->setEnabled(m_files.canShowInFolder());
    m_compare->setEnabled(m_files.canCompare());
    m_undo->setEnabled(m_files.canUndo());
}

int FileControls::widthWhen(bool compact) const
{
    return m_show->widthWhen(compact) + m_compare->widthWhen(compact) + m_undo->widthWhen(compact) + 2 * gap;
}

QSize FileControls::minimumSizeHint() const
{
    return {widthWhen(true), m_show->sizeHint().height()};
}

void FileControls::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

bool FileControls::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutRequest) arrange();
    return QWidget::event(event);
}

void FileControls::arrange()
{
    for (ChipButton* chip : {m_show, m_compare, m_undo})
        chip->setCompact(width() < widthWhen(false));
}

} // namespace lumora
