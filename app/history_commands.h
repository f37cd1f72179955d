// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The history as the menus use it: what is looked up is looked up off the main thread, then the user is
// asked. Main thread.
#pragma once

#include "app/panels/history_questions.h"
#include "history/history_records.h"
#include "model/history_reader.h"

#include <QObject>

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QWidget;

namespace lumora {

class History;
class ProcessingModel;

class HistoryCommands : public QObject
{
    Q_OBJECT

public:
    // Made when it is first asked for.
    std::shared_ptr<History> history();

    // Asks, above `parent`, whether the last batch is to be taken back, and has the model do it. Does nothing
    // while the model cannot.
    void undoLastBatch(ProcessingModel& model, QWidget* parent);
    void undoBatch(std::int64_t batch, ProcessingModel& model, QWidget* parent);
    // A single one without a question.
    void undoFiles(std::vector<std::int64_t> files, ProcessingModel& model, QWidget* parent);
    // Forgets everything if the user agrees.
    void forget(QWidget* parent);

Q_SIGNALS:
    void forgotten();

private:
    using Batches = std::optional<std::vector<BatchSummary>>;

    HistoryReader& reader();
    // The batch that `look` finds, or none.
    void undoFound(std::function<Batches(History&)> look, WhichBatch which, ProcessingModel& model,
                   QWidget* parent);

    std::shared_ptr<History> m_history;
    std::optional<HistoryReader> m_reader;
    bool m_isAsking = false;
};

} // namespace lumora
