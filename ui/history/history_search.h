// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is looked for in the history: part of a name, and which files. Down goes from the field to what was
// found; Escape empties it.
#pragma once

#include "history/history_records.h"

#include <QWidget>

#include <string>

namespace lumora {

class ChipButton;
class SearchField;

class HistorySearch : public QWidget
{
    Q_OBJECT

public:
    explicit HistorySearch(QWidget* parent = nullptr);

    // In bytes, as names are.
    std::string name() const;
    HistoryFilter filter() const { return m_filter; }
    void setFilter(HistoryFilter filter);
    void begin();
    // What was typed elsewhere.
    void append(const QString& text);
    // Whether there was anything.
    bool clear();

Q_SIGNALS:
    void nameChanged();
    void filterChanged();
    void listRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void makeMenu();
    void refresh();

    SearchField* m_field;
    ChipButton* m_chip;
    HistoryFilter m_filter = HistoryFilter::all;
};

} // namespace lumora
