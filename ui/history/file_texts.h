// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What is said of one file of the history. Thread-safe.
#pragma once

#include "history/history_records.h"
#include "records/processing_result.h"
#include "ui/history/file_places.h"

#include <QString>

#include <optional>

namespace lumora {

ProcessingResult resultOf(const FileRecord& file);
QString messageOf(const FileRecord& file); // in one line
// "4 MB -> 900 KB | saved 3.1 MB (77.5%)"; empty where nothing was written.
QString sizesOf(const FileRecord& file);

// "Output there", "Undone".
QString outputPlaceText(const FileRecord& file, const FilePlaces& places);
// "Original in the Trash".
QString originalPlaceText(const FilePlaces& places);

QString fileToolTip(const FileRecord& file);
QString spokenFile(const FileRecord& file, const std::optional<FilePlaces>& places);

} // namespace lumora
