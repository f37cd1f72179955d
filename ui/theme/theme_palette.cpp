// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/theme/theme_palette.h"

#include "ui/theme/tidewell_theme.h"

namespace lumora {

QPalette themePalette()
{
    using namespace TidewellTheme;
    QPalette palette;
    const auto set = [&](QPalette::ColorRole role, const QColor& colour) { palette.setColor(role, colour); };
    set(QPalette::Window, bg());
    set(QPalette::WindowText, cream());
    set(QPalette::Base, lightCardRaised());
    set(QPalette::AlternateBase, lightCard());
    set(QPalette::Text, ink());
    set(QPalette::PlaceholderText, mutedInk());
    set(QPalette::Button, lightCard());
    set(QPalette::ButtonText, ink());
    set(QPalette::BrightText, cream());
    set(QPalette::Highlight, copper());
    set(QPalette::HighlightedText, cream());
    set(QPalette::Link, copperBright());
    set(QPalette::LinkVisited, copperBright());
    set(QPalette::ToolTipBase, leatherDeep());
    set(QPalette::ToolTipText, cream());
    palette.setColor(QPalette::Disabled, QPalette::WindowText, withOpacity(cream(), 0.45));
    palette.setColor(QPalette::Disabled, QPalette::Text, withOpacity(ink(), 0.45));
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, withOpacity(ink(), 0.45));
    return palette;
}

} // namespace lumora
