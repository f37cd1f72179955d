// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The texts for people, each one printable line without its end. Thread-safe.
#pragma once

#include "model/result_text.h"
#include "records/processing_result.h"

#include <QLocale>

#include <string>

namespace lumora::cli {

// "photo.jpg: 2 MB -> 1.5 MB | saved 500 KB (25.0%) | Saved 500 KB", or the name and the reason of a failure.
// Long messages are cut.
std::string resultRow(const ProcessingResult& result, const QLocale& locale);

// "Files 3/4 | Total Saved 1.5 MB | Reduction 25.0%".
std::string summaryRow(const ResultTotals& totals, const QLocale& locale);

} // namespace lumora::cli
