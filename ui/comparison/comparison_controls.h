// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The row of chips below compared pictures: other results, zoom, ways of looking. Where there is little room
// the texts go.
#pragma once

#include <QWidget>

#include <vector>

namespace lumora {

class ChipButton;
class ComparisonCanvas;
class FiguresLabel;
class ResultSequence;

class ComparisonControls : public QWidget
{
    Q_OBJECT

public:
    // Both outlive the row.
    ComparisonControls(ComparisonCanvas& canvas, ResultSequence& results, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    using Group = std::vector<QWidget*>;

    ChipButton* addChip(const char* symbol, const char* text, const char* helpText);
    void refresh();
    void arrange();
    int widthOf(const Group& group, bool compact) const;
    void place(const Group& group, int left);

    ComparisonCanvas& m_canvas;
    ResultSequence& m_results;
    ChipButton* m_previous;
    ChipButton* m_next;
    ChipButton* m_zoomOut;
    FiguresLabel* m_zoom;
    ChipButton* m_zoomIn;
    ChipButton* m_fit;
    ChipButton* m_fullSize;
    ChipButton* m_difference;
    ChipButton* m_flip;
    std::vector<Group> m_groups;
};

} // namespace lumora
