// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "records/optimizer_settings.h"

#include <string>

namespace lumora {

// The settings of a batch in one line for people: "WebP Lossy, quality 82, at most 2560 wide, sRGB, …".
// Thread-safe.
std::string settingsWords(const OptimizerSettings& settings);

} // namespace lumora
