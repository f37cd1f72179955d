// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPalette>

namespace lumora {

// Cream on leather for windows and menus, ink on a light ground for fields and buttons.
QPalette themePalette();

} // namespace lumora
