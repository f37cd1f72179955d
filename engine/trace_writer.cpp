// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/trace_writer.h"

#include "system/content_digest.h"
#include "system/trash.h"

namespace lumora::ImageOptimizer {

Status trashOriginal(const Job& job)
{
    // A link goes, and not what it leads to.
    const auto original = job.services.trace ? linkStamp(job.input) : std::nullopt;
    Status status = job.services.moveToTrash(job.input);
    if (!status || !original) return status;
    FileTrace& trace = *job.services.trace;
    trace.isOriginalTrashed = true;
    trace.source = fileState(*original);
    trace.trashedOriginal = placeInTrash(job.input, *original);
    return status;
}

void traceSource(const Job& job, const std::optional<FileStamp>& read)
{
    if (job.services.trace && read) job.services.trace->source = fileState(*read);
}

void traceOutput(const Job& job, const std::filesystem::path& output, int content)
{
    if (!job.services.trace) return;
    if (const auto stamp = linkStamp(output)) job.services.trace->output = fileState(*stamp);
    job.services.trace->outputDigest = contentDigest(content).value_or("");
}

} // namespace lumora::ImageOptimizer
