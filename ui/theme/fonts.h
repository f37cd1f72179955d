// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The type scale. Family and size follow the application's font, whose pixel size stands for the body text
// (13 at the default scale). Views refresh theirs on QEvent::ApplicationFontChange. Sizes are logical pixels
// at the default text scale. Main thread only.
#pragma once

#include <QFont>

class QApplication;

namespace lumora::fonts {

enum class TextStyle { title2, headline, subheadline, body, caption, caption2 };

// Keeps the desktop's family and gives the body its size: 13 times the text scale. Every widget is sent an
// ApplicationFontChange. Scales outside 0.5 to 3 are clamped.
void install(QApplication& application, double textScale);
// The scale of the application's font: 1 where the body is 13 pixels high.
double textScale();

QFont font(TextStyle style, QFont::Weight weight);
// The style in its usual weight: headline semibold, all others regular.
QFont font(TextStyle style);
// A text of a fixed design size, for the places that name one.
QFont systemFont(double size, QFont::Weight weight);

// The fonts above draw letter by letter: many families join "->" into an arrow or the x of "4x4" into a sign,
// and what is written must be what is read. Text of users and their files may need its marks placed and its
// emoji joined: this gives a font that does so where the text is not plain ASCII.
QFont shapedFor(const QString& text, QFont font);

// The height of one line of text. It does not depend on the family's own metrics: a result row (7 + 16 + 2 +
// 12 + 2 + 12 + 7) is 58 high with any desktop font.
int lineHeight(TextStyle style);
// A length of the design, grown with the text scale and rounded to whole pixels.
int scaled(double length);

} // namespace lumora::fonts
