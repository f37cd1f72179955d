// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The theme's icons for the toolkit's own file panels, which show where the desktop has none. Main thread.
#pragma once

#include <QIcon>
#include <QStyle>

#include <optional>

namespace lumora {

// Absent where the theme has none of its own.
std::optional<QIcon> styleIcon(QStyle::StandardPixmap kind);

} // namespace lumora
