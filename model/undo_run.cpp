// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/undo_run.h"

#include "history/file_state.h"
#include "history/history.h"
#include "history/undo.h"
#include "model/batch_outcome.h"
#include "model/main_thread_queue.h"

#include <algorithm>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <stop_token>
#include <string>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace lumora {
namespace {

// Rows by the places of their files, as the history spells them.
class ShownRows
{
public:
    explicit ShownRows(const std::vector<ShownOutput>& shown)
    {
        for (const ShownOutput& row : shown)
            m_rows.try_emplace(key(resolvedPlace(row.source), resolvedPlace(row.output)), row.id);
    }

    std::optional<Uuid> find(const UndoneFile& file) const
    {
        const auto found = m_rows.find(key(file.source, file.output));
        return found == m_rows.end() ? std::nullopt : std::optional(found->second);
    }

private:
    static std::string key(const std::filesystem::path& source, const std::filesystem::path& output)
    {
        return source.native() + '\0' + output.native();
    }

    std::unordered_map<std::string, Uuid> m_rows;
};

// What is ahead of the window's rows: where it were without a bound, a cancel would come when all is done,
// and be seen when all is shown.
class RowsAhead
{
public:
    void add(const std::stop_token& stop)
    {
        constexpr int most = 200;
        std::unique_lock lock(m_mutex);
        // Where there was no thread to be had nobody shows rows meanwhile.
        if (stop.stop_possible()) m_shown.wait(lock, stop, [this] { return m_rows < most; });
        ++m_rows;
    }

    void remove()
    {
        const std::lock_guard lock(m_mutex);
        --m_rows;
        m_shown.notify_one();
    }

private:
    std::mutex m_mutex;
    std::condition_variable_any m_shown;
    int m_rows = 0; // guarded by m_mutex
};

ProcessingResult rowOf(const UndoneFile& file, const std::optional<Uuid>& id)
{
    ProcessingResult row(file.source, file.output, file.originalBytes, file.outputBytes, file.message, true);
    if (isTakenBack(file.message)) row = {file.source, std::nullopt, 0, 0, file.message, false};
    if (id) row.id = *id;
    return row;
}

} // namespace

UndoRun::UndoRun(UndoOrder order, UndoObserver observer, MainThreadQueue& mainThread)
{
    const auto work = [order = std::move(order), observer = std::move(observer),
                       &mainThread](const std::stop_token& stop) {
        const auto files = order.files(*order.history);
        if (files) {
            const auto count =
                std::ranges::count_if(*files, [](const auto& file) { return file.output.has_value(); });
            mainThread.post([begun = observer.begun, count = static_cast<int>(count)] { begun(count); });
            const ShownRows shown(order.shown);
            const auto ahead = std::make_shared<RowsAhead>();
            const auto report = [&](const UndoneFile& file) {
                ahead->add(stop);
                mainThread.post([undone = observer.undone, ahead, row = rowOf(file, shown.find(file))] {
                    ahead->remove();
                    undone(row);
                });
            };
            undoFiles(*order.history, *files, UndoMode::forReal, report, stop);
        }
        mainThread.post([ended = observer.ended, isRead = files.has_value()] { ended(isRead); });
    };
    try {
        m_thread = std::jthread(work);
    } catch (const std::system_error&) {
        work({}); // the system has no thread to give
    }
}

} // namespace lumora
