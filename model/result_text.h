// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The figures of results as people read them, shared by the results list and the command line. Thread-safe. A
// difference or sum beyond 64 bits ends the program: such sizes exist on no disk and would make every total a
// lie.
#pragma once

#include "records/processing_result.h"

#include <QLocale>
#include <QString>

#include <cstdint>

namespace lumora {

// The size line of one result: "2 MB -> 1.5 MB | saved 500 KB (25.0%)", "… | no size change", "… | larger by
// …", or only the two sizes when the original's is not known.
QString metricsText(const ProcessingResult& result, const QLocale& locale);

// The totals of many results. Failed ones count as files and in nothing else.
struct ResultTotals
{
    std::int64_t files = 0;
    std::int64_t succeeded = 0;
    std::int64_t originalBytes = 0;
    std::int64_t outputBytes = 0;

    void add(const ProcessingResult& result);

    QString filesText() const;       // "3/4"
    QString differenceTitle() const; // "Total Saved" or "Total Larger"
    QString differenceText(const QLocale& locale) const;
    QString
    percentageText(const QLocale& locale) const; // "12.5%" for a reduction, "+12.5%" for growth, or "0%"
};

} // namespace lumora
