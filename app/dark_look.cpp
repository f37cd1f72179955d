// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/dark_look.h"

#include "ui/fonts.h"
#include "ui/tidewell_theme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleFactory>
#include <QToolTip>

namespace lumora {
namespace {

QPalette darkPalette()
{
    using namespace TidewellTheme;
    QPalette palette(leather(), bg());
    palette.setColor(QPalette::Base, leatherDeep());
    palette.setColor(QPalette::AlternateBase, bgWarm());
    palette.setColor(QPalette::Button, leather());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText,
                            QPalette::BrightText})
        palette.setColor(role, cream());
    palette.setColor(QPalette::PlaceholderText, creamSubtle());
    palette.setColor(QPalette::ToolTipBase, leatherRaised());
    palette.setColor(QPalette::Highlight, copper());
    palette.setColor(QPalette::HighlightedText, cream());
    palette.setColor(QPalette::Link, copperBright());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, withOpacity(cream(), 0.4));
    return palette;
}

} // namespace

void installDarkLook(QApplication& application)
{
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    QApplication::setPalette(darkPalette());
    QToolTip::setPalette(darkPalette());
    fonts::install(application, fonts::desktopTextScale());
}

} // namespace lumora
