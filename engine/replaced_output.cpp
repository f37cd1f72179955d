// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/replaced_output.h"

#include "system/file_services.h"
#include "system/trash.h"

#include <utility>

namespace lumora::ImageOptimizer {

ReplacedOutput::ReplacedOutput(const Job& job, const std::filesystem::path& output)
    : m_job(job), m_output(output), m_standing(linkStamp(output))
{
    const auto& [input, settings, services] = job;
    const bool isSilent = settings.trashReplaced && !settings.warnBeforeOverwrite && services.keepInTrash;
    if (!m_standing || !isSilent || !checkReplaceable(output)) return;
    m_isLoss = !services.isOwnOutput || !services.isOwnOutput(output, input);
}

ExistingFile ReplacedOutput::makeRoom()
{
    if (!m_isLoss) return ExistingFile::replace;
    if (auto place = m_job.services.keepInTrash(m_output)) {
        m_place = std::move(*place);
        m_trashed = Trashed::besides;
        return ExistingFile::replace;
    }
    if (!m_job.services.moveToTrash(m_output)) return ExistingFile::replace;
    m_place = placeInTrash(m_output, *m_standing);
    m_trashed = Trashed::instead;
    return ExistingFile::keep;
}

void ReplacedOutput::settle(bool isPlaced)
{
    if (!isPlaced && m_trashed == Trashed::besides) removeFromTrash(*m_place);
    if (!isPlaced && m_trashed == Trashed::instead && m_place)
        static_cast<void>(takeFromTrash(*m_place, m_output));
    if (!isPlaced || !m_standing || !m_job.services.trace) return;
    m_job.services.trace->replaced = fileState(*m_standing);
    m_job.services.trace->trashedReplaced = m_place;
}

} // namespace lumora::ImageOptimizer
