// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "model/lumora_settings.h"

#include "records/optimizer_settings.h"

namespace lumora {

LumoraSettings::LumoraSettings(const QString& fileName, QObject* parent) : QObject(parent), m_file(fileName)
{
    connect(&m_file, &PreferencesFile::changed, this, &LumoraSettings::changed);
}

double LumoraSettings::normalizedQuality() const
{
    return lumora::normalizedQuality(quality());
}

bool LumoraSettings::usesLossyCompression() const
{
    return lumora::usesLossyCompression(outputFormat());
}

} // namespace lumora
