// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/history_commands.h"

#include "app/panels/history_questions.h"
#include "history/history.h"
#include "model/processing_model.h"
#include "model/stats_store.h"

#include <QPointer>
#include <QScopedValueRollback>
#include <QWidget>

namespace lumora {

std::shared_ptr<History> HistoryCommands::history()
{
    if (!m_history) m_history = std::make_shared<History>(History::fileIn(StatsStore::userDataFolder()));
    return m_history;
}

HistoryReader& HistoryCommands::reader()
{
    if (!m_reader) m_reader.emplace(history());
    return *m_reader;
}

void HistoryCommands::undoLastBatch(ProcessingModel& model, QWidget* parent)
{
    const auto look = [](History& history) { return history.lastToUndo(); };
    reader().ask(look, [this, &model, parent = QPointer(parent)](const auto& last) {
        if (m_isAsking || !model.canUndo()) return;
        const QScopedValueRollback asking(m_isAsking, true);
        if (!last) return tellHistoryUnusable(parent);
        if (last->empty()) return tellNothingToUndo(parent);
        if (confirmUndo(last->front(), parent)) model.undoBatch(last->front().batch.id);
    });
}

void HistoryCommands::forget(QWidget* parent)
{
    if (!confirmForgetting(parent)) return;
    const auto clear = [](History& history) { return history.clear(); };
    reader().ask(clear, [this, parent = QPointer(parent)](bool isDone) {
        if (!isDone) return tellHistoryUnusable(parent);
        Q_EMIT forgotten();
    });
}

} // namespace lumora
