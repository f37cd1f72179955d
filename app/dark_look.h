// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The look of what the views do not paint themselves: menus, dialogs and tool tips in the dark colours of the
// palette, whatever the desktop's own look is. Main thread, once, before the first window.
#pragma once

class QApplication;

namespace lumora {

void installDarkLook(QApplication& application);

} // namespace lumora
