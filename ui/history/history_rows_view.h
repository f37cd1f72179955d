// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the two lists of the history have in common: rows on a card, a text where there are none, and a menu
// for each. What is typed goes to whoever searches.
#pragma once

#include "ui/controls/uniform_row_view.h"

#include <QString>

class QMenu;

namespace lumora {

class HistoryRowsView : public UniformRowView
{
    Q_OBJECT

public:
    explicit HistoryRowsView(QWidget* parent = nullptr);

    // Shown in the middle while there are no rows.
    void setPlaceholder(const QString& text);
    const QString& placeholder() const { return m_placeholder; }

    // Of a row, owned by the view; null where a row has none.
    virtual QMenu* makeContextMenu(const QModelIndex& index) = 0;

    void keyboardSearch(const QString& text) override { Q_EMIT typed(text); }
    QSize sizeHint() const override { return {300, 300}; }
    QSize minimumSizeHint() const override;

Q_SIGNALS:
    void typed(const QString& text);

protected:
    virtual void paintRow(QPainter& painter, const QModelIndex& index,
                          const QStyleOptionViewItem& option) const = 0;
    // After what is in sight was painted, and so may have changed.
    virtual void rowsPainted(int first, int last);

    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    QString m_placeholder;
};

} // namespace lumora
