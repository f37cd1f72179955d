// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The palette of every view: leather browns, copper accents and light cards. Colours are sRGB, made once on
// first use. Thread-safe.
#pragma once

#include <QColor>

namespace lumora::TidewellTheme {

const QColor& bg();
const QColor& bgWarm();
const QColor& leather();
const QColor& leatherRaised();
const QColor& leatherDeep();
const QColor& ink(); // the value of bg: text on a light card looks cut out of it
const QColor& mutedInk();
const QColor& lightCard();
const QColor& lightCardRaised();
const QColor& cream();
const QColor& creamMuted();
const QColor& creamSubtle();
const QColor& copper();
const QColor& copperBright();
const QColor& copperStrong();
const QColor& sage();
const QColor& border();
const QColor& darkBorder();

// `colour` with its own opacity multiplied by `opacity` (0 to 1).
QColor withOpacity(const QColor& colour, double opacity);

} // namespace lumora::TidewellTheme
