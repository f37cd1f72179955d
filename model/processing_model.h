// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Takes drops, gathers them into batches and runs each batch's files on parallel workers. A drop waits for
// the end of its burst, a drop during a batch for the batch's end; then folders are expanded off the main
// thread, with the settings of that moment. Every file ends as one result, newest first, in the order in
// which files finish.
//
// What the history remembers can be taken back while no batch runs; drops wait for the end of that too.
//
// All members and signals belong to the main thread, whose event loop must run. Destruction in the middle of
// a batch stops the files in work, answers open questions with skip and waits for the workers.
#pragma once

#include "model/batch.h"
#include "model/batch_outcome.h"
#include "model/folder_access.h"
#include "model/main_thread_queue.h"
#include "model/overwrite_prompter.h"
#include "model/pending_inputs.h"
#include "model/processing_services.h"
#include "model/result_log.h"
#include "model/undo_run.h"
#include "records/processing_result.h"

#include <QObject>
#include <QString>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace lumora {

class SettingsStore;
class StatsStore;

class ProcessingModel : public QObject
{
    Q_OBJECT
    Q_PROPERTY(bool isProcessing READ isProcessing NOTIFY isProcessingChanged)
    Q_PROPERTY(QString statusText READ statusText NOTIFY statusTextChanged)
    Q_PROPERTY(int completedCount READ completedCount NOTIFY progressChanged)
    Q_PROPERTY(int totalCount READ totalCount NOTIFY progressChanged)

public:
    using Snapshot = std::function<OptimizerSettings()>;

    // `snapshot` is called once at the start of each batch; without `statsStore` nothing is recorded. Both
    // outlive the model.
    ProcessingModel(Snapshot snapshot, StatsStore* statsStore, ProcessingServices services,
                    QObject* parent = nullptr);
    ProcessingModel(SettingsStore& settingsStore, StatsStore& statsStore, ProcessingServices services,
                    QObject* parent = nullptr);
    ~ProcessingModel() override;

    // Accepts drops at any time, also from a signal or from onComplete. What is already waiting is not queued
    // again.
    void process(const std::vector<std::filesystem::path>& paths);

    // Takes back what the history remembers of a batch, of files by their numbers in it, or of what one row
    // shows. Each file's result gives way to one that says what became of it, or is a new one. Does nothing
    // while canUndo() is false.
    void undoBatch(std::int64_t batch);
    void undoFiles(std::vector<std::int64_t> files);
    void undo(int row);
    // There is a history, nothing is in work and nothing waits.
    bool canUndo() const;

    // Hands out no further file and drops what waits, and says so at once; files in flight finish and are
    // reported and recorded, then the batch completes. Does nothing when there is nothing to cancel.
    void cancel();
    // cancel(), and the files in flight fail as soon as they can, and questions
    // skip.
    void cancelNow();
    // While a batch is paused its files in flight finish and no other begins.
    bool canPause() const { return m_batch && m_batch->canPause(); }
    void setPaused(bool paused);
    bool isPaused() const { return canPause() && m_batch->isPaused(); }
    // From cancel() to the end of its batch.
    bool isCancelling() const
    {
        return (m_batch && m_batch->isCancelled()) || (m_undo && m_undo->isCancelled());
    }
    // The last batch ended, or never began, because of cancel().
    bool wasCancelled() const { return m_wasCancelled; }
    // Of the running or the last batch; what it left out is known at its end.
    const BatchOutcome& outcome() const { return m_outcome; }

    bool isProcessing() const { return m_isProcessing; }
    const QString& statusText() const { return m_statusText; }

    // Of the running or the last batch; the total is 0 until its folders are expanded.
    int completedCount() const { return m_completedCount; }
    int totalCount() const { return m_totalCount; }

    // Row 0 is the newest. A reference stays valid until rows are removed.
    int resultCount() const { return m_results.count(); }
    const ProcessingResult& resultAt(int row) const { return m_results.at(row); }

    // Forgets the results so far. A running batch goes on.
    void clearResults();
    // Processes files without an output once more, as drops that replace their rows: that of one row, or all
    // that failed.
    void retry(int row);
    void retryFailed();

    // Called once, when a batch completes with nothing left waiting.
    void setOnComplete(std::function<void()> onComplete);

Q_SIGNALS:
    void isProcessingChanged();
    void statusTextChanged();
    void progressChanged();
    // One row more, at row 0.
    void resultInserted();
    // A row, whichever, has another result.
    void resultChanged();
    // Rows went, and those that stay may have other numbers.
    void resultsRemoved();

private:
    void startPendingBatch();
    void processExpandedBatch(Batch::Expansion expansion);
    void processInParallel(Batch::Expansion expansion);
    bool mayTakeSoMany(const Batch::Expansion& expansion) const;
    void consume(const ProcessingResult& result);
    QString undoneText() const;
    QString progressText() const;
    void retryThose(const ResultLog::Which& which);
    void startUndo(std::function<std::optional<std::vector<FileRecord>>(History&)> files);
    std::vector<ShownOutput> shownOutputs() const;
    void takeBack(const ProcessingResult& result);
    void completeBatch(const QString& message);
    int workerCount(std::size_t files) const;
    void setProcessing(bool isProcessing);
    void setStatusText(const QString& text);
    void setProgress(int completed, int total);

    const Snapshot m_snapshot;
    StatsStore* const m_statsStore;
    const ProcessingServices m_services;
    PendingInputs m_pending;
    FolderAccess m_folderAccess;
    MainThreadQueue m_mainThread;
    OverwritePrompter m_prompter;
    const std::unique_ptr<Delay> m_debounce;
    // One of them exactly while m_isProcessing.
    std::unique_ptr<Batch> m_batch;
    std::unique_ptr<UndoRun> m_undo;

    bool m_isProcessing = false;
    bool m_wasCancelled = false;
    BatchOutcome m_outcome;
    QString m_statusText;
    int m_completedCount = 0;
    int m_totalCount = 0;
    ResultLog m_results;
    std::function<void()> m_onComplete;
};

} // namespace lumora
