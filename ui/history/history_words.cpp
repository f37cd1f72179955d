// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_words.h"

#include "ui/controls/byte_text.h"

#include <QDateTime>
#include <QLocale>

#include <cstdlib>

namespace lumora {

QString counted(std::int64_t number, const char* thing, const char* things)
{
    return QLocale().toString(static_cast<qlonglong>(number)) + u' ' +
           QLatin1String(number == 1 ? thing : things);
}

QString filesText(std::int64_t files)
{
    return counted(files, "file", "files");
}

QString savedText(std::int64_t bytes)
{
    if (bytes == 0) return QStringLiteral("nothing saved");
    return QLatin1String(bytes > 0 ? "saved " : "larger by ") + byteText(std::abs(bytes));
}

// In the language of all other words.
QString dayText(QDate day, QDate today)
{
    if (day == today) return QStringLiteral("Today");
    if (day == today.addDays(-1)) return QStringLiteral("Yesterday");
    return QLocale(QLocale::English).toString(day, QStringLiteral("ddd, d MMMM yyyy"));
}

QString timeText(std::int64_t secondsSince1970)
{
    return QDateTime::fromSecsSinceEpoch(secondsSince1970).time().toString(QStringLiteral("HH:mm"));
}

QString whenText(std::int64_t secondsSince1970)
{
    const QDate day = dayOf(secondsSince1970);
    const bool isRecent = day >= QDate::currentDate().addDays(-1);
    return (isRecent ? dayText(day) : QLocale(QLocale::English).toString(day, QStringLiteral("d MMM yyyy"))) +
           u' ' + timeText(secondsSince1970);
}

QString settingsText(const BatchRecord& batch)
{
    return QStringLiteral("%1, by %2")
        .arg(QString::fromStdString(batch.settings), QString::fromStdString(batch.origin));
}

QDate dayOf(std::int64_t secondsSince1970)
{
    return QDateTime::fromSecsSinceEpoch(secondsSince1970).date();
}

} // namespace lumora
