// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/processing_model.h"

#include "history/file_state.h"
#include "history/history.h"
#include "model/settings_store.h"
#include "model/stats_store.h"

#include <algorithm>
#include <utility>

namespace lumora {
namespace {

QString nothingFound()
{
    return QStringLiteral("No supported image files found");
}

QString counted(std::size_t count, const QString& noun)
{
    return QString::number(count) + u' ' + noun + (count == 1 ? QString() : QStringLiteral("s"));
}

QString optimizingText(std::size_t files, int workers)
{
    return QStringLiteral("Optimizing %1 with %2...")
        .arg(counted(files, QStringLiteral("image")),
             counted(static_cast<std::size_t>(workers), QStringLiteral("worker")));
}

QString unreadableHistory()
{
    return QStringLiteral("The history cannot be read");
}

QString invitation()
{
    return QStringLiteral("Drop images here");
}

} // namespace

ProcessingModel::ProcessingModel(Snapshot snapshot, StatsStore* statsStore, ProcessingServices services,
                                 QObject* parent)
    : QObject(parent), m_snapshot(std::move(snapshot)), m_statsStore(statsStore),
      m_services(std::move(services)), m_folderAccess(m_services.requestSaveAccess),
      m_prompter(m_services.confirmOverwrite, m_mainThread),
      m_debounce(m_services.makeDelay([this] { startPendingBatch(); })), m_statusText(invitation())
{
}

ProcessingModel::ProcessingModel(SettingsStore& settingsStore, StatsStore& statsStore,
                                 ProcessingServices services, QObject* parent)
    : ProcessingModel([&settingsStore] { return settingsStore.snapshot(); }, &statsStore, std::move(services),
                      parent)
{
}

ProcessingModel::~ProcessingModel() = default;

void ProcessingModel::setOnComplete(std::function<void()> onComplete)
{
    m_onComplete = std::move(onComplete);
}

void ProcessingModel::process(const std::vector<std::filesystem::path>& paths)
{
    if (m_pending.add(paths) == 0) {
        setStatusText(nothingFound());
        return;
    }
    if (!m_isProcessing) m_debounce->restart(m_services.debounce);
}

void ProcessingModel::cancel()
{
    const bool wasWaiting = !m_pending.isEmpty();
    m_pending.take();
    m_debounce->stop();
    m_wasCancelled = m_wasCancelled || m_isProcessing || wasWaiting;
    if (m_undo) {
        m_undo->cancel();
        setStatusText(QStringLiteral("Cancelling..."));
    } else if (m_batch) {
        m_batch->cancel();
        setStatusText(QStringLiteral("Cancelling..."));
        if (m_batch && m_batch->isDone()) completeBatch(QStringLiteral("Done")); // it was paused
    } else if (wasWaiting) {
        completeBatch(QStringLiteral("Done"));
    }
}

void ProcessingModel::cancelNow()
{
    cancel();
    if (m_batch) m_batch->stop();
}

void ProcessingModel::setPaused(bool paused)
{
    if (!canPause() || m_batch->isPaused() == paused) return;
    m_batch->setPaused(paused);
    setStatusText(progressText());
}

void ProcessingModel::clearResults()
{
    if (m_results.count() == 0) return;
    m_results.clear();
    Q_EMIT resultsRemoved();
    if (m_isProcessing) return;
    m_outcome = {};
    setStatusText(invitation());
}

void ProcessingModel::retry(int row)
{
    const ProcessingResult* wanted = &resultAt(row);
    retryThose([wanted](const ProcessingResult& result) { return &result == wanted && !result.isSuccess; });
}

void ProcessingModel::retryFailed()
{
    retryThose(isFailed);
}

void ProcessingModel::retryThose(const ResultLog::Which& which)
{
    const auto files = m_results.take(which);
    if (files.empty()) return;
    Q_EMIT resultsRemoved();
    process(files);
}

bool ProcessingModel::canUndo() const
{
    return !m_isProcessing && m_pending.isEmpty() && m_services.history && m_services.history();
}

void ProcessingModel::undoBatch(std::int64_t batch)
{
    startUndo([batch](History& history) { return history.filesOf(batch); });
}

void ProcessingModel::undoFiles(std::vector<std::int64_t> files)
{
    std::ranges::sort(files); // as they were done
    startUndo([files = std::move(files)](History& history) { return history.filesNumbered(files); });
}

void ProcessingModel::undo(int row)
{
    const ProcessingResult& result = resultAt(row);
    if (!result.outputURL) return;
    startUndo([source = result.sourceURL, output = *result.outputURL](History& history) {
        return history.lastOf(resolvedPlace(source), resolvedPlace(output));
    });
}

void ProcessingModel::startUndo(std::function<std::optional<std::vector<FileRecord>>(History&)> files)
{
    if (!canUndo()) return;
    m_wasCancelled = false;
    m_outcome = {};
    setProgress(0, 0);
    setProcessing(true);
    setStatusText(QStringLiteral("Undoing..."));
    const UndoObserver observer{
        [this](int count) { setProgress(0, count); },
        [this](const ProcessingResult& result) { takeBack(result); },
        [this](bool isRead) { completeBatch(isRead ? undoneText() : unreadableHistory()); }};
    m_undo = std::make_unique<UndoRun>(UndoOrder{m_services.history(), std::move(files), shownOutputs()},
                                       observer, m_mainThread);
}

std::vector<ShownOutput> ProcessingModel::shownOutputs() const
{
    std::vector<ShownOutput> shown;
    for (int row = 0; row < resultCount(); ++row) {
        const ProcessingResult& result = resultAt(row);
        if (result.outputURL) shown.push_back({result.id, result.sourceURL, *result.outputURL});
    }
    return shown;
}

void ProcessingModel::takeBack(const ProcessingResult& result)
{
    if (m_results.replace(result)) {
        Q_EMIT resultChanged();
    } else {
        m_results.add(result);
        Q_EMIT resultInserted();
    }
    m_outcome.add(result);
    setProgress(m_completedCount + 1, m_totalCount);
    if (!isCancelling())
        setStatusText(QStringLiteral("Undid %1 of %2").arg(m_completedCount).arg(m_totalCount));
}

void ProcessingModel::startPendingBatch()
{
    if (m_isProcessing || m_pending.isEmpty()) return;
    auto inputs = m_pending.take();
    m_batch = std::make_unique<Batch>(BatchContext{m_snapshot(), m_services, m_mainThread, m_prompter});
    m_wasCancelled = false;
    m_outcome = {};
    setProgress(0, 0);
    setProcessing(true);
    setStatusText(QStringLiteral("Scanning for images..."));
    m_batch->expand(std::move(inputs),
                    [this](Batch::Expansion expansion) { processExpandedBatch(std::move(expansion)); });
}

void ProcessingModel::processExpandedBatch(Batch::Expansion expansion)
{
    if (m_batch->isCancelled()) return completeBatch(QStringLiteral("Done"));
    if (expansion.files.empty()) return completeBatch(nothingFound());
    if (!mayTakeSoMany(expansion)) {
        m_wasCancelled = true;
        setProgress(0, static_cast<int>(expansion.files.size()));
    }
    if (m_wasCancelled) return completeBatch(QStringLiteral("Done"));

    const bool writesNextToOriginals =
        m_batch->settings().destinationMode == DestinationMode::originalLocation;
    if (writesNextToOriginals && !m_folderAccess.obtain(expansion.folders))
        return completeBatch(QStringLiteral("Save permission needed"));
    // The panel leaves time to cancel.
    if (m_batch->isCancelled()) return completeBatch(QStringLiteral("Done"));

    processInParallel(std::move(expansion));
}

bool ProcessingModel::mayTakeSoMany(const Batch::Expansion& expansion) const
{
    if (!m_services.confirmManyFiles || !expansion.comesFromFolders) return true;
    if (expansion.files.size() < m_services.manyFiles) return true;
    return m_services.confirmManyFiles(expansion.files.size(), expansion.folders.size());
}

int ProcessingModel::workerCount(std::size_t files) const
{
    const int atMost = m_services.workers.value_or(std::max(2, m_services.activeProcessorCount));
    return static_cast<int>(std::min(files, static_cast<std::size_t>(std::max(1, atMost))));
}

void ProcessingModel::processInParallel(Batch::Expansion expansion)
{
    const std::size_t files = expansion.files.size();
    const int workers = workerCount(files);
    setProgress(0, static_cast<int>(files));
    setStatusText(optimizingText(files, workers));
    m_batch->start(std::move(expansion), workers,
                   [this](const ProcessingResult& result) { consume(result); });
    if (m_batch->isDone()) completeBatch(QStringLiteral("Done")); // cancelled by an observer of the status
}

void ProcessingModel::consume(const ProcessingResult& result)
{
    m_results.add(result);
    m_outcome.add(result);
    Q_EMIT resultInserted();
    if (m_statsStore) m_statsStore->record(result);
    setProgress(m_completedCount + 1, m_totalCount);
    if (!m_batch->isCancelled()) setStatusText(progressText());
    m_batch->fileFinished(); // not before: an observer that runs an event loop must not see the batch end
    m_batch->handOut();
    if (m_batch->isDone()) completeBatch(QStringLiteral("Done"));
}

QString ProcessingModel::undoneText() const
{
    return m_totalCount > 0 ? QStringLiteral("Done") : QStringLiteral("There is nothing to undo");
}

QString ProcessingModel::progressText() const
{
    const QString text =
        isPaused() ? QStringLiteral("Paused at %1 of %2") : QStringLiteral("Optimized %1 of %2");
    return text.arg(m_completedCount).arg(m_totalCount);
}

void ProcessingModel::completeBatch(const QString& message)
{
    m_batch.reset();
    m_undo.reset();
    m_outcome.leftOut = m_totalCount - m_completedCount;
    setProcessing(false);
    if (!m_pending.isEmpty()) {
        startPendingBatch();
        return;
    }
    setStatusText(message);
    if (const auto onComplete = std::exchange(m_onComplete, nullptr)) onComplete();
}

void ProcessingModel::setProcessing(bool isProcessing)
{
    if (std::exchange(m_isProcessing, isProcessing) != isProcessing) Q_EMIT isProcessingChanged();
}

void ProcessingModel::setStatusText(const QString& text)
{
    if (std::exchange(m_statusText, text) != text) Q_EMIT statusTextChanged();
}

void ProcessingModel::setProgress(int completed, int total)
{
    const bool isNew = completed != m_completedCount || total != m_totalCount;
    m_completedCount = completed;
    m_totalCount = total;
    if (isNew) Q_EMIT progressChanged();
}

} // namespace lumora
