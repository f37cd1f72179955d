// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// One setting: its key, its type and its default. Every read asks the preferences file and every set goes
// there, so a view may hold a SettingValue& as its two-way binding. Belongs to a PreferencesFile; main thread
// only.
#pragma once

#include "model/preferences_file.h"
#include "model/setting_conversion.h"

#include <utility>

namespace lumora {

template <class T>
class SettingValue
{
public:
    SettingValue(PreferencesFile& file, const char* key, T fallback)
        : m_file(file), m_key(QString::fromLatin1(key)), m_fallback(std::move(fallback))
    {
        m_file.follow(m_key);
    }
    SettingValue(const SettingValue&) = delete;
    SettingValue& operator=(const SettingValue&) = delete;

    const QString& key() const { return m_key; }

    // The default when the key is absent or holds something that is no T; what is stored stays as it is.
    T operator()() const { return fromStored<T>(m_file.value(m_key)).value_or(m_fallback); }

    void set(const T& value) { m_file.setValue(m_key, toStored(value)); }

private:
    PreferencesFile& m_file;
    const QString m_key;
    const T m_fallback;
};

} // namespace lumora
