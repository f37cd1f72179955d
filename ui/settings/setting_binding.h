// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Ties a view to settings: it shows the stored values at once and again after each change, wherever that was
// made.
#pragma once

#include "model/lumora_settings.h"

#include <cstdint>
#include <initializer_list>

namespace lumora {

// Calls `show` now and whenever one of the settings `keys` changes, for as long as `view` lives.
template <class Show>
void followSettings(const LumoraSettings& settings, std::initializer_list<QString> keys, QObject* view,
                    Show show)
{
    const QList<QString> followed(keys);
    QObject::connect(&settings, &LumoraSettings::changed, view, [followed, show](const QString& key) {
        if (followed.contains(key)) show();
    });
    show();
}

// The quality as people read it: cut off toward zero. A stored quality that is no 64-bit number ends the
// program with a message, because every shown and every used quality would be a different one.
std::int64_t wholeQuality(double quality);

inline QString text(std::string_view title)
{
    return QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size()));
}

} // namespace lumora
