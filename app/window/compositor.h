// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Whether something blends windows over what lies behind them, so that transparent corners show the desktop
// and not black. Main thread; asks the display server, so not for a paint event.
#pragma once

namespace lumora {

bool compositorRuns();

} // namespace lumora
