// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What a run tells the history of its file, where there is one. One thread.
#pragma once

#include "engine/opened_picture.h"
#include "records/file_trace.h"
#include "system/regular_file.h"
#include "system/result.h"

#include <filesystem>
#include <optional>

namespace lumora::ImageOptimizer {

// Moves the original to the Trash, as the job's services do it.
Status trashOriginal(const Job& job);

void traceSource(const Job& job, const std::optional<FileStamp>& read);
// The finished output, whose content is open.
void traceOutput(const Job& job, const std::filesystem::path& output, int content);

} // namespace lumora::ImageOptimizer
