// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What can be done with the list as a whole: show its failures alone and try them again, both only where
// there is one, sort it, clear it. Where there is little room the texts go first, then whole chips from the
// end.
#pragma once

#include <QWidget>

#include <vector>

namespace lumora {

class ChipButton;
class ResultsListModel;

class ResultsControls : public QWidget
{
    Q_OBJECT

public:
    // The model must outlive the controls.
    explicit ResultsControls(ResultsListModel& results, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void makeSortMenu();
    void refresh();
    void arrange();
    std::vector<ChipButton*> wanted() const;

    ResultsListModel& m_results;
    ChipButton* m_failures;
    ChipButton* m_retry;
    ChipButton* m_sort;
    ChipButton* m_clear;
};

} // namespace lumora
