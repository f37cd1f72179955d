// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/result_text.h"

#include "system/byte_count_text.h"

#include <cmath>
#include <limits>

namespace lumora {

namespace {

std::int64_t checkedSum(std::int64_t a, std::int64_t b)
{
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) qFatal("The sizes of the results add up beyond 64 bits.");
    return sum;
}

std::int64_t checkedDifference(std::int64_t a, std::int64_t b)
{
    std::int64_t difference = 0;
    const bool overflowed = __builtin_sub_overflow(a, b, &difference);
    if (overflowed || difference == std::numeric_limits<std::int64_t>::min())
        qFatal("The sizes of a result differ by more than 64 bits.");
    return difference;
}

QString sizeText(std::int64_t bytes, const QLocale& locale)
{
    return QString::fromStdString(byteCountText(bytes, locale.decimalPoint().toStdString()));
}

// |part| of `whole` in percent, without the sign and without "%".
QString shareText(std::int64_t part, std::int64_t whole, const QLocale& locale)
{
    return locale.toString(std::abs(static_cast<double>(part) / static_cast<double>(whole) * 100), 'f', 1);
}

} // namespace

QString metricsText(const ProcessingResult& result, const QLocale& locale)
{
    const QString sizes =
        sizeText(result.originalBytes, locale) + QLatin1String(" -> ") + sizeText(result.outputBytes, locale);
    const std::int64_t saved = checkedDifference(result.originalBytes, result.outputBytes);
    if (result.originalBytes <= 0) return sizes;
    if (saved == 0) return sizes + QLatin1String(" | no size change");
    return sizes + QLatin1String(saved > 0 ? " | saved " : " | larger by ") +
           sizeText(std::abs(saved), locale) + QLatin1String(" (") +
           shareText(saved, result.originalBytes, locale) + QLatin1String("%)");
}

void ResultTotals::add(const ProcessingResult& result)
{
    ++files;
    if (!result.isSuccess) return;
    ++succeeded;
    originalBytes = checkedSum(originalBytes, result.originalBytes);
    outputBytes = checkedSum(outputBytes, result.outputBytes);
}

QString ResultTotals::filesText() const
{
    return QStringLiteral("%1/%2").arg(succeeded).arg(files);
}

QString ResultTotals::differenceTitle() const
{
    return checkedDifference(originalBytes, outputBytes) < 0 ? QStringLiteral("Total Larger")
                                                             : QStringLiteral("Total Saved");
}

QString ResultTotals::differenceText(const QLocale& locale) const
{
    return sizeText(std::abs(checkedDifference(originalBytes, outputBytes)), locale);
}

QString ResultTotals::percentageText(const QLocale& locale) const
{
    if (originalBytes <= 0) return QStringLiteral("0%");
    const std::int64_t difference = checkedDifference(originalBytes, outputBytes);
    return QLatin1String(difference < 0 ? "+" : "") + shareText(difference, originalBytes, locale) +
           QLatin1Char('%');
}

} // namespace lumora
