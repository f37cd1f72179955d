// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// What the history says in numbers and dates. Thread-safe.
#pragma once

#include "history/history_records.h"

#include <QDate>
#include <QString>

#include <cstdint>

namespace lumora {

// "1 file", "2,345 files".
QString counted(std::int64_t number, const char* thing, const char* things);
QString filesText(std::int64_t files);
// "saved 2.1 MB", "larger by 3 KB", "nothing saved".
QString savedText(std::int64_t bytes);
// "Today", "Yesterday", "Tue, 3 November 2026".
QString dayText(QDate day, QDate today = QDate::currentDate());
QString timeText(std::int64_t secondsSince1970); // "14:32"
// Both, where there is less room: "Today 14:32", "3 Nov 2026 14:32".
QString whenText(std::int64_t secondsSince1970);
// How it was done: the settings and the program.
QString settingsText(const BatchRecord& batch);
QDate dayOf(std::int64_t secondsSince1970);

} // namespace lumora
