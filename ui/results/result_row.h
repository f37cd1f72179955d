// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One row of the results list: its texts, its geometry and its painting. Rectangles are in the list's
// viewport.
#pragma once

#include "ui/results/results_list_model.h"
#include "ui/theme/symbols.h"

#include <QRect>
#include <QString>
#include <QStyleOptionViewItem>

class QColor;
class QModelIndex;
class QPainter;

namespace lumora {

// How the eye is told of an outcome.
Symbol outcomeSymbol(ResultsListModel::Outcome outcome);
QColor outcomeColour(ResultsListModel::Outcome outcome);

class ResultRow
{
public:
    // 58 at the default text scale, the divider included.
    static int height();

    ResultRow(const QModelIndex& index, const QStyleOptionViewItem& option);

    // Empty where the row has no output to show.
    QRect revealButton() const;
    // `revealHovered`: the pointer is over the button.
    void paint(QPainter& painter, bool revealHovered) const;

private:
    QRect mirrored(const QRect& area) const;
    QRect textColumn() const;
    void paintTexts(QPainter& painter) const;

    const QStyleOptionViewItem& m_option;
    QString m_name;
    QString m_message;
    QString m_metricsText;
    ResultsListModel::Outcome m_outcome;
    bool m_isSuccess;
    bool m_hasOutput;
    bool m_isLast;
};

} // namespace lumora
