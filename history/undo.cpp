// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "history/undo.h"

#include "history/file_state.h"
#include "history/history_locks.h"
#include "system/content_digest.h"
#include "system/file_services.h"
#include "system/regular_file.h"
#include "system/trash.h"

#include <unistd.h>

#include <utility>
#include <vector>

namespace lumora {
namespace {

// So many files are marked at once: a program that is killed looks at them anew, which does no harm.
constexpr std::size_t markedAtOnce = 200;

// A file that went to the Trash, on its way back.
struct TrashedFile
{
    enum class Where { inTrash, inPlace, placeTaken, unknown };

    const std::filesystem::path& place;
    const std::optional<std::filesystem::path>& trashed;
    const std::optional<FileState>& state;

    Where where() const
    {
        const auto standing = stateAt(place);
        if (standing) return standing == state ? Where::inPlace : Where::placeTaken;
        return trashed && state && stateAt(*trashed) == state ? Where::inTrash : Where::unknown;
    }
};

bool isWhatWeWrote(const FileRecord& file)
{
    const auto stamp = linkStamp(*file.output);
    if (!stamp || !file.trace.output || stamp->size != file.trace.output->size) return false;
    if (file.trace.outputDigest.empty()) return fileState(*stamp) == file.trace.output;
    const auto opened = openRegularFile(*file.output);
    return opened && contentDigest(opened->get()) == file.trace.outputDigest;
}

class FileUndo
{
public:
    FileUndo(const FileRecord& file, UndoMode mode) : m_file(file), m_isReal(mode == UndoMode::forReal) {}

    UndoneFile run()
    {
        if (m_file.isUndone) return row(true, "Undone already");
        // First, since without it the output is what is left of the picture.
        const std::string obstacle = bringOriginal();
        if (!obstacle.empty()) return refusal(obstacle);
        const bool isGone = !stateAt(*m_file.output);
        if (!isGone && isReplacedBack()) return row(true, "Undone already");
        if (!isGone && !isWhatWeWrote(m_file)) return row(false, kept("the output was changed since"));
        if (!isGone && m_isReal) {
            const Status trashed = moveToTrash(*m_file.output);
            if (!trashed) return row(false, kept(trashed.error().description));
        }
        const std::string loss = bringReplaced();
        if (!loss.empty()) return row(false, "Undone in part: " + loss);
        if (isGone) return row(true, verdict() + ". The output was gone already");
        return row(true, verdict());
    }

    UndoneFile refusal(const std::string& reason) const { return row(false, std::string(leftWord) + reason); }

private:
    UndoneFile row(bool isUndone, std::string message) const
    {
        return {m_file.source,      *m_file.output, m_file.originalBytes,
                m_file.outputBytes, isUndone,       std::move(message)};
    }

    std::string verdict() const { return m_isReal ? "Undone" : "Would be undone"; }

    std::string kept(const std::string& reason) const
    {
        return std::string(outputLeftWord) + reason +
               (!m_broughtOriginal ? ""
                : m_isReal         ? ". The original came back"
                                   : ". The original would come back");
    }

    // Why it cannot; empty when it is in its place.
    std::string bringOriginal()
    {
        const FileTrace& trace = m_file.trace;
        if (!trace.isOriginalTrashed) return stateAt(m_file.source) ? "" : "the original is no longer there";
        const TrashedFile original{m_file.source, trace.trashedOriginal, trace.source};
        switch (original.where()) {
        case TrashedFile::Where::inPlace:
            return {};
        case TrashedFile::Where::placeTaken:
            return "another file has the original's place";
        case TrashedFile::Where::unknown:
            return "the original is not found in the Trash";
        case TrashedFile::Where::inTrash:
            break;
        }
        if (!fileExists(m_file.source.parent_path()))
            return "the original's folder is no longer there; the original is in the Trash";
        m_broughtOriginal = true;
        return take(*trace.trashedOriginal, m_file.source);
    }

    bool isReplacedBack() const
    {
        return m_file.trace.trashedReplaced && stateAt(*m_file.output) == m_file.trace.replaced;
    }

    std::string bringReplaced() const
    {
        const FileTrace& trace = m_file.trace;
        if (!trace.trashedReplaced) return {};
        // In a dry run the output stands there still.
        if (stateAt(*trace.trashedReplaced) != trace.replaced)
            return "what the output had replaced is not found in the Trash";
        return take(*trace.trashedReplaced, *m_file.output);
    }

    std::string take(const std::filesystem::path& trashed, const std::filesystem::path& place) const
    {
        if (!m_isReal) return {};
        const auto taken = takeFromTrash(trashed, place);
        if (taken) return {};
        return taken.error().isTaken ? "another file has its place" : taken.error().description;
    }

    const FileRecord& m_file;
    const bool m_isReal;
    bool m_broughtOriginal = false;
};

// Of two programs that take the same file back, the later one finds it done: between a look at an output and
// its way to the Trash, what it had replaced could otherwise come to stand in its place.
UndoneFile undoAlone(const std::filesystem::path& history, const FileRecord& file)
{
    const auto alone = lockUndo(history);
    FileUndo undo(file, UndoMode::forReal);
    return alone ? undo.run() : undo.refusal("another undo does not come to its end");
}

// A folder that holds anything else stays.
void removeEmptied(const std::vector<std::filesystem::path>& folders)
{
    for (auto last = folders.rbegin(); last != folders.rend(); ++last) // those within others come first
        ::rmdir(last->c_str());
}

} // namespace

void undoFiles(History& history, const std::vector<FileRecord>& files, UndoMode mode,
               const UndoReport& report, const std::stop_token& stop)
{
    std::vector<std::int64_t> done;
    const auto mark = [&] {
        if (!done.empty() && mode == UndoMode::forReal) history.markUndone(done);
        done.clear();
    };
    for (auto last = files.rbegin(); last != files.rend() && !stop.stop_requested(); ++last) {
        const FileRecord& file = *last;
        if (!file.output) continue;
        const UndoneFile undone = mode == UndoMode::forReal ? undoAlone(history.file(), file)
                                                            : FileUndo(file, UndoMode::dryRun).run();
        if (undone.isUndone && !file.isUndone) done.push_back(file.id);
        if (done.size() == markedAtOnce) mark();
        report(undone);
    }
    mark();
    if (mode == UndoMode::forReal) removeEmptied(history.foldersMadeWith(files));
}

bool undoBatch(History& history, std::int64_t batch, UndoMode mode, const UndoReport& report,
               const std::stop_token& stop)
{
    const auto files = history.filesOf(batch);
    if (files) undoFiles(history, *files, mode, report, stop);
    return files.has_value();
}

} // namespace lumora
