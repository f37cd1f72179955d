// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// A walk through the results in the order of their list, over those that have an output. Keeps its place
// while rows come, go or are arranged anew. Main thread.
#pragma once

#include "records/processing_result.h"

#include <QObject>
#include <QPersistentModelIndex>
#include <QPointer>

#include <optional>

namespace lumora {

class ComparableResults;

class ResultSequence : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    // The walk ends where it is when the list goes.
    void begin(ComparableResults& results, const QModelIndex& index);
    // Stays when its row goes.
    const std::optional<ProcessingResult>& current() const { return m_current; }
    bool canStep(int direction) const { return neighbour(direction).isValid(); }
    // To the next row that can be compared: 1 downwards, -1 upwards.
    void step(int direction);

Q_SIGNALS:
    void currentChanged();
    // Where it can go to may have changed.
    void neighboursChanged();

private:
    void follow(ComparableResults& results);
    void goTo(const QModelIndex& index);
    void take();
    QModelIndex neighbour(int direction) const;
    void findAgain();

    QPointer<ComparableResults> m_results;
    QPersistentModelIndex m_row;
    bool m_isAwaited = false; // the result of that row
    std::optional<ProcessingResult> m_current;
};

} // namespace lumora
