// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The names by which the desktop knows the application.
#pragma once

#include <QLatin1String>

namespace lumora {

// Bus name, desktop entry and icon share one identifier: the desktop links them by it.
constexpr QLatin1String applicationId("example.tidewell.Lumora");
constexpr QLatin1String applicationObjectPath("/example/tidewell/Lumora");

} // namespace lumora
