// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/lifetime_stats.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QString>

#include <nlohmann/json.hpp>

#include <limits>
#include <map>
#include <utility>

namespace lumora {
namespace {

using nlohmann::json;
using Clock = LifetimeStats::Clock;

constexpr const char* dateKey = "lastProcessedAt";

constexpr std::pair<const char*, std::int64_t LifetimeStats::*> totals[] = {
    {"filesProcessed", &LifetimeStats::filesProcessed},
    {"filesSucceeded", &LifetimeStats::filesSucceeded},
    {"originalBytes", &LifetimeStats::originalBytes},
    {"outputBytes", &LifetimeStats::outputBytes},
    {"grossBytesSaved", &LifetimeStats::grossBytesSaved},
    {"netBytesSaved", &LifetimeStats::netBytesSaved},
    {"largestSingleSaveBytes", &LifetimeStats::largestSingleSaveBytes},
};

std::string dateText(Clock::time_point date)
{
    const auto seconds = std::chrono::floor<std::chrono::seconds>(date.time_since_epoch()).count();
    return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC).toString(Qt::ISODate).toStdString();
}

std::optional<Clock::time_point> dateFromText(const std::string& text)
{
    static const QRegularExpression internetDateTime(
        QStringLiteral(R"(\A\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d(Z|[+-]\d\d:\d\d)\z)"));
    const QString candidate = QString::fromStdString(text);
    if (!internetDateTime.match(candidate).hasMatch()) return std::nullopt;

    const QDateTime date = QDateTime::fromString(candidate, Qt::ISODate);
    if (!date.isValid()) return std::nullopt;
    // The clock counts nanoseconds in 64 bits, which ends in the year 2262.
    const std::chrono::seconds seconds(date.toSecsSinceEpoch());
    const auto limit = std::chrono::duration_cast<std::chrono::seconds>(Clock::duration::max());
    if (seconds > limit || seconds < -limit) return std::nullopt;
    return Clock::time_point(seconds);
}

std::optional<std::int64_t> integerAt(const json& object, const char* key)
{
    const auto found = object.find(key);
    if (found == object.end() || !found->is_number_integer()) return std::nullopt;
    if (found->is_number_unsigned()) {
        const auto number = found->get<std::uint64_t>();
        if (number > std::uint64_t{std::numeric_limits<std::int64_t>::max()}) return std::nullopt;
    }
    return found->get<std::int64_t>();
}

// False when there is something under the date's key that is no date.
bool readDate(const json& object, std::optional<Clock::time_point>& date)
{
    const auto found = object.find(dateKey);
    if (found == object.end() || found->is_null()) return true;
    if (found->is_string()) date = dateFromText(found->get<std::string>());
    return date.has_value();
}

} // namespace

std::string toJson(const LifetimeStats& stats)
{
    std::map<std::string, std::string> values;
    for (const auto& [key, total] : totals)
        values[key] = std::to_string(stats.*total);
    if (stats.lastProcessedAt) values[dateKey] = '"' + dateText(*stats.lastProcessedAt) + '"';

    std::string lines;
    for (const auto& [key, value] : values) {
        if (!lines.empty()) lines += ",\n";
        lines += "  \"" + key + "\" : " + value;
    }
    return "{\n" + lines + "\n}";
}

std::optional<LifetimeStats> lifetimeStatsFromJson(std::string_view text)
{
    const json object = json::parse(text, nullptr, false);
    if (!object.is_object()) return std::nullopt;

    LifetimeStats stats;
    for (const auto& [key, total] : totals) {
        const auto number = integerAt(object, key);
        if (!number) return std::nullopt;
        stats.*total = *number;
    }
    if (!readDate(object, stats.lastProcessedAt)) return std::nullopt;
    return stats;
}

} // namespace lumora
