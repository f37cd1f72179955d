// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/text_rows.h"

#include "cli/printable.h"

namespace lumora::cli {

namespace {

// An encoder may print a megabyte; its first words say what is wrong.
constexpr std::size_t messageLimit = 300;

} // namespace

std::string resultRow(const ProcessingResult& result, const QLocale& locale)
{
    std::string row = printable(result.sourceURL.native()) + ": ";
    if (result.isSuccess) row += metricsText(result, locale).toStdString() + " | ";
    return row + elided(printable(result.message), messageLimit);
}

std::string summaryRow(const ResultTotals& totals, const QLocale& locale)
{
    const QString text = QStringLiteral("Files %1 | %2 %3 | Reduction %4")
                             .arg(totals.filesText(), totals.differenceTitle(), totals.differenceText(locale),
                                  totals.percentageText(locale));
    return text.toStdString();
}

} // namespace lumora::cli
