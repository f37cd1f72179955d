// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/batch_outputs.h"

#include "system/regular_file.h"

namespace lumora::ImageOptimizer {

Status BatchOutputs::place(AtomicFile& file, const std::filesystem::path& output, ExistingFile existing,
                           const std::function<ExistingFile()>& makeRoom)
{
    const std::lock_guard lock(m_mutex);
    const auto standing = fileStamp(output);
    if (standing && m_written.contains({standing->device, standing->inode})) existing = ExistingFile::keep;
    if (existing == ExistingFile::replace) existing = makeRoom();
    Status status = file.commit(existing);
    const auto placed = status ? fileStamp(output) : std::nullopt;
    if (placed) m_written.emplace(placed->device, placed->inode);
    return status;
}

} // namespace lumora::ImageOptimizer
