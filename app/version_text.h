// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The version of the running program, from its application directory. Main thread.
#pragma once

#include <QString>

namespace lumora {

// "Version 1.0.0 (1)"
QString versionText();

} // namespace lumora
