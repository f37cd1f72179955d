// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/history_commands.h"

#include "history/history.h"
#include "model/processing_model.h"
#include "model/stats_store.h"

#include <QPointer>
#include <QScopedValueRollback>
#include <QWidget>

#include <utility>

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
    undoFound([](History& history) { return history.lastToUndo(); }, WhichBatch::last, model, parent);
}

void HistoryCommands::undoBatch(std::int64_t batch, ProcessingModel& model, QWidget* parent)
{
    const auto look = [batch](History& history) {
        Batches found = history.batch(batch);
        if (found)
            std::erase_if(*found, [](const BatchSummary& each) { return each.undone >= each.written; });
        return found;
    };
    undoFound(look, WhichBatch::chosen, model, parent);
}

void HistoryCommands::undoFound(std::function<Batches(History&)> look, WhichBatch which,
                                ProcessingModel& model, QWidget* parent)
{
    reader().ask(std::move(look), [this, which, &model, parent = QPointer(parent)](const Batches& found) {
        if (m_isAsking || !model.canUndo()) return;
        const QScopedValueRollback asking(m_isAsking, true);
        if (!found) return tellHistoryUnusable(parent);
        if (found->empty()) return tellNothingToUndo(parent);
        if (confirmUndo(found->front(), which, parent)) model.undoBatch(found->front().batch.id);
    });
}

void HistoryCommands::undoFiles(std::vector<std::int64_t> files, ProcessingModel& model, QWidget* parent)
{
    if (m_isAsking || !model.canUndo()) return;
    const QScopedValueRollback asking(m_isAsking, true);
    if (files.size() < 2 || confirmUndo(files.size(), parent)) model.undoFiles(std::move(files));
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
