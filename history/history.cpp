// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/history.h"

#include "history/file_state.h"
#include "system/content_digest.h"
#include "system/regular_file.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <iterator>
#include <system_error>

namespace lumora {
namespace {

// So many rows are not kept waiting.
constexpr std::size_t manyRows = 10'000;

// Of a regular file, links followed.
std::optional<std::string> digestOf(const std::filesystem::path& path)
{
    const auto file = openRegularFile(path);
    return file ? contentDigest(file->get()) : std::nullopt;
}

} // namespace

std::filesystem::path History::fileIn(const std::filesystem::path& dataFolder)
{
    return dataFolder / "Lumora" / "history.sqlite";
}

void History::complainOnStandardError(const std::string& complaint)
{
    std::fprintf(stderr, "%s: %s\n", program_invocation_short_name, complaint.c_str());
}

History::History(std::filesystem::path file, Complain complain, std::chrono::milliseconds pace)
    : m_file(std::move(file)), m_complain([this, complain = std::move(complain)](const std::string& reason) {
          {
              const std::lock_guard waiting(m_waiting);
              m_trouble = reason;
          }
          complain(reason);
      }),
      m_pace(pace)
{
    try {
        m_writer = std::jthread([this](const std::stop_token& stop) { work(stop); });
    } catch (const std::system_error&) {
        // The system has no thread to give: whoever reads, and the end, write.
    }
}

History::~History()
{
    m_writer.request_stop();
    if (m_writer.joinable()) m_writer.join();
    const std::lock_guard lock(m_using);
    writePending();
    if (isSomethingPending()) complainOnce("it is in use");
}

History::Batch History::begin(std::string origin, std::string settings)
{
    return std::make_shared<BatchRecord>(
        BatchRecord{0, std::time(nullptr), std::move(origin), std::move(settings)});
}

void History::add(const Batch& batch, FileRecord file)
{
    {
        const std::lock_guard lock(m_waiting);
        m_pending.emplace_back(batch, std::move(file));
        m_isUrgent = m_isUrgent || m_latest != batch;
        m_latest = batch;
    }
    m_rowCame.notify_one();
}

void History::work(const std::stop_token& stop)
{
    while (!stop.stop_requested()) {
        std::unique_lock lock(m_waiting);
        if (!m_rowCame.wait(lock, stop, [this] { return !m_pending.empty(); })) return;
        m_rowCame.wait_for(lock, stop, m_pace, [this] { return m_isUrgent || m_pending.size() >= manyRows; });
        lock.unlock();
        const std::lock_guard inUse(m_using);
        writePending();
    }
}

// What cannot be written now, but perhaps later, waits on.
void History::writeRows(HistoryDatabase& database)
{
    std::vector<Row> rows;
    {
        const std::lock_guard lock(m_waiting);
        rows.swap(m_pending);
        m_isUrgent = false;
    }
    if (rows.empty()) return;
    try {
        write(database, rows);
    } catch (const SqliteError& error) {
        if (!error.isBusy() && !error.isDamage()) throw;
        const std::lock_guard lock(m_waiting);
        rows.insert(rows.end(), std::make_move_iterator(m_pending.begin()),
                    std::make_move_iterator(m_pending.end()));
        m_pending.swap(rows);
        throw;
    }
}

bool History::isSomethingPending()
{
    const std::lock_guard lock(m_waiting);
    return !m_pending.empty();
}

// The number of a batch counts only when its transaction did.
void History::write(HistoryDatabase& database, const std::vector<Row>& rows)
{
    std::vector<Batch> added;
    try {
        Transaction writing(database.sqlite());
        for (const auto& [batch, file] : rows) {
            if (batch->id == 0) {
                batch->id = database.addBatch(*batch);
                added.push_back(batch);
            }
            database.addFile(batch->id, file);
        }
        database.prune(std::time(nullptr));
        writing.commit();
    } catch (...) {
        for (const Batch& batch : added)
            batch->id = 0;
        throw;
    }
}

// What waits is written before anything is asked.
bool History::use(const Task& task)
{
    const std::lock_guard lock(m_using);
    writePending();
    return attempt(task) == Outcome::done;
}

// With m_using held.
void History::writePending()
{
    if (!isSomethingPending()) return;
    const Outcome outcome = attempt([this](HistoryDatabase& database) { writeRows(database); });
    if (outcome != Outcome::failed) return;
    const std::lock_guard waiting(m_waiting);
    m_pending.clear();
}

// What fails was told, and is not tried again; what is busy may go better later.
History::Outcome History::attempt(const Task& task)
{
    try {
        tryOnce(task);
        return Outcome::done;
    } catch (const SqliteError& error) {
        if (error.isBusy()) return Outcome::busy;
        complainOnce(error.what());
    } catch (const std::exception& error) {
        complainOnce(error.what());
    }
    m_database.reset();
    return Outcome::failed;
}

// Damage may show late. Whether the file is damaged is then looked at anew: another program may have put a
// whole one in its place.
void History::tryOnce(const Task& task)
{
    if (!m_database) m_database = std::make_unique<HistoryDatabase>(m_file, m_complain);
    try {
        return task(*m_database);
    } catch (const SqliteError& error) {
        if (!error.isDamage()) throw;
    }
    m_database.reset();
    m_database = std::make_unique<HistoryDatabase>(m_file, m_complain, HistoryDatabase::Trust::none);
    task(*m_database);
}

void History::complainOnce(const std::string& reason)
{
    if (!std::exchange(m_hasComplained, true)) m_complain("the history cannot be kept: " + reason);
}

bool History::isOwnOutput(const std::filesystem::path& output, const std::filesystem::path& source)
{
    const auto stamp = linkStamp(output);
    if (!stamp) return false;
    std::vector<std::string> digests;
    use([&](HistoryDatabase& database) {
        digests = database.digestsOf(resolvedPlace(output), resolvedPlace(source), stamp->size);
    });
    if (digests.empty()) return false;
    const auto digest = digestOf(output);
    return digest && std::ranges::find(digests, *digest) != digests.end();
}

bool History::isOptimized(const std::filesystem::path& file)
{
    const auto stamp = fileStamp(file);
    if (!stamp) return false;
    bool isKnown = false;
    use([&](HistoryDatabase& database) { isKnown = database.hasOutput(stamp->size); });
    if (!isKnown) return false;
    const auto digest = digestOf(file);
    if (!digest) return false;
    use([&](HistoryDatabase& database) { isKnown = database.hasOutput(stamp->size, *digest); });
    return isKnown;
}

std::optional<std::vector<BatchSummary>> History::batches()
{
    std::vector<BatchSummary> found;
    if (!use([&](HistoryDatabase& database) { found = database.batches(); })) return std::nullopt;
    return found;
}

std::optional<std::vector<BatchSummary>> History::batch(std::int64_t id)
{
    std::vector<BatchSummary> found;
    if (!use([&](HistoryDatabase& database) { found = database.batch(id); })) return std::nullopt;
    return found;
}

std::optional<std::vector<FileRecord>> History::filesOf(std::int64_t batch)
{
    std::vector<FileRecord> found;
    if (!use([&](HistoryDatabase& database) { found = database.filesOf(batch); })) return std::nullopt;
    return found;
}

std::optional<std::vector<FoundFile>> History::find(const FileQuery& wanted)
{
    std::vector<FoundFile> found;
    if (!use([&](HistoryDatabase& database) { found = database.find(wanted); })) return std::nullopt;
    return found;
}

std::optional<std::vector<FileRecord>> History::filesNumbered(const std::vector<std::int64_t>& numbers)
{
    std::vector<FileRecord> found;
    if (!use([&](HistoryDatabase& database) { found = database.filesNumbered(numbers); }))
        return std::nullopt;
    return found;
}

std::optional<std::vector<FileRecord>> History::lastOf(const std::filesystem::path& source,
                                                       const std::filesystem::path& output)
{
    std::vector<FileRecord> found;
    if (!use([&](HistoryDatabase& database) { found = database.lastOf(source, output); }))
        return std::nullopt;
    return found;
}

std::optional<std::vector<BatchSummary>> History::lastToUndo()
{
    std::vector<BatchSummary> found;
    if (!use([&](HistoryDatabase& database) { found = database.lastToUndo(); })) return std::nullopt;
    return found;
}

std::vector<std::filesystem::path> History::foldersMadeWith(const std::vector<FileRecord>& files)
{
    std::vector<std::filesystem::path> found;
    use([&](HistoryDatabase& database) { found = database.foldersMadeWith(files); });
    return found;
}

void History::markUndone(const std::vector<std::int64_t>& files)
{
    use([&](HistoryDatabase& database) { database.markUndone(files); });
}

std::string History::trouble()
{
    const std::lock_guard waiting(m_waiting);
    return m_trouble;
}

HistoryLimits History::limits()
{
    HistoryLimits found;
    use([&](HistoryDatabase& database) { found = database.limits(); });
    return found;
}

bool History::setLimits(const HistoryLimits& limits)
{
    return use([&](HistoryDatabase& database) { database.setLimits(limits); });
}

bool History::clear()
{
    {
        const std::lock_guard lock(m_waiting);
        m_pending.clear();
    }
    return use([this](HistoryDatabase& database) {
        database.clear();
        // The rows still to come of a batch at work are one of their own.
        const std::lock_guard lock(m_waiting);
        if (m_latest) m_latest->id = 0;
    });
}

} // namespace lumora
