// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

// From now on assistive technology is told that a BrandedWindow is a window; the toolkit takes a plain
// widget for a filler. Once a process, before the first window.
void exposeBrandedWindows();

} // namespace lumora
