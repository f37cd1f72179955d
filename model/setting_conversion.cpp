// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/setting_conversion.h"

#include <QLocale>
#include <QMetaType>

#include <cmath>

namespace lumora {
namespace {

bool holds(const QVariant& stored, QMetaType::Type type)
{
    return stored.typeId() == type;
}

} // namespace

template <>
std::optional<QString> fromStored(const QVariant& stored)
{
    if (!holds(stored, QMetaType::QString)) return std::nullopt;
    return stored.toString();
}

template <>
std::optional<bool> fromStored(const QVariant& stored)
{
    const QString text = fromStored<QString>(stored).value_or(QString()).toLower();
    if (text == QLatin1String("true") || text == QLatin1String("1")) return true;
    if (text == QLatin1String("false") || text == QLatin1String("0")) return false;
    return std::nullopt;
}

template <>
std::optional<std::int64_t> fromStored(const QVariant& stored)
{
    bool parsed = false;
    const qlonglong number = fromStored<QString>(stored).value_or(QString()).toLongLong(&parsed);
    return parsed ? std::optional<std::int64_t>(number) : std::nullopt;
}

template <>
std::optional<double> fromStored(const QVariant& stored)
{
    bool parsed = false;
    const double number = fromStored<QString>(stored).value_or(QString()).toDouble(&parsed);
    return parsed && std::isfinite(number) ? std::optional(number) : std::nullopt;
}

template <>
std::optional<QByteArray> fromStored(const QVariant& stored)
{
    if (holds(stored, QMetaType::QByteArray)) return stored.toByteArray();
    const auto text = fromStored<QString>(stored);
    return text ? std::optional(text->toUtf8()) : std::nullopt;
}

bool isStoredAlike(const QVariant& a, const QVariant& b)
{
    return a.metaType() == b.metaType() && a == b;
}

QVariant toStored(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
}

QVariant toStored(std::int64_t value)
{
    return QString::number(value);
}

QVariant toStored(double value)
{
    return QString::number(value, 'g', QLocale::FloatingPointShortest);
}

} // namespace lumora
