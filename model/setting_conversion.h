// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Between a setting's type and what an INI file holds, where a value that was not just written comes back as
// text. Reading is strict: anything that is not exactly a value of the type is absent. Pure functions.
#pragma once

#include "records/option_enums.h"

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <concepts>
#include <cstdint>
#include <optional>
#include <string>

namespace lumora {

template <class T>
concept OptionEnum = requires(T value)
{
    rawValue(value);
};

template <class T>
std::optional<T> fromStored(const QVariant& stored);
// "true" or "false" in any letter case, "1" or "0".
template <>
std::optional<bool> fromStored(const QVariant& stored);
template <>
std::optional<std::int64_t> fromStored(const QVariant& stored);
// Finite numbers only.
template <>
std::optional<double> fromStored(const QVariant& stored);
template <>
std::optional<QString> fromStored(const QVariant& stored);
// Text counts as its UTF-8 bytes, so that a path typed into the file by hand is taken.
template <>
std::optional<QByteArray> fromStored(const QVariant& stored);
// A raw value, exactly.
template <OptionEnum T>
std::optional<T> fromStored(const QVariant& stored)
{
    const auto text = fromStored<QString>(stored);
    return text ? fromRawValue<T>(text->toStdString()) : std::nullopt;
}

// Whether two values are stored alike. The toolkit's own comparison turns one type into the other first.
bool isStoredAlike(const QVariant& a, const QVariant& b);

// The form that is read back, so that a value compares equal before and after the way through the file.
QVariant toStored(bool value);
QVariant toStored(std::int64_t value);
QVariant toStored(double value);
inline QVariant toStored(const QString& value)
{
    return value;
}
inline QVariant toStored(const QByteArray& value)
{
    return value;
}
template <OptionEnum T>
QVariant toStored(T value)
{
    return QString::fromStdString(std::string(rawValue(value)));
}

} // namespace lumora
