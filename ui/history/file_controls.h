// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The row of chips below the files: what can be done with those that are chosen. Where there is little room
// the texts go.
#pragma once

#include <QWidget>

namespace lumora {

class ChipButton;
class HistoryFilesView;

class FileControls : public QWidget
{
    Q_OBJECT

public:
    // The view outlives the row.
    explicit FileControls(HistoryFilesView& files, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    ChipButton* addChip(const char* symbol, const char* text, const char* helpText);
    int widthWhen(bool compact) const;
    void refresh();
    void arrange();

    HistoryFilesView& m_files;
    ChipButton* m_show;
    ChipButton* m_compare;
    ChipButton* m_undo;
};

} // namespace lumora
