// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The corner of the drop zone while a batch runs: a cross that cancels it, and a menu that also pauses and
// resumes it, opened by the chevron beside the cross or as the context menu of either. Hidden without a
// batch.
#pragma once

#include <QWidget>

class QMenu;

namespace lumora {

class CancelButton;
class ProcessingModel;
class ZoneButton;

class BatchControls : public QWidget
{
    Q_OBJECT

public:
    // The model must outlive the controls.
    explicit BatchControls(ProcessingModel& processing, QWidget* parent = nullptr);

    // Ends the batch after the files in work, and at once when it is called again.
    void cancel();

    // What the batch can be told now. Owned by the controls.
    QMenu* makeMenu();

    QSize sizeHint() const override;
    // Also while they are hidden.
    void place(const QRect& area);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void refresh();
    void showMenu();

    ProcessingModel& m_processing;
    ZoneButton* m_more;
    CancelButton* m_cancel;
};

} // namespace lumora
