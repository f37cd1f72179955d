// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/search_field.h"

#include "ui/theme/tidewell_theme.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>

namespace lumora {
namespace {

using namespace TidewellTheme;

constexpr int margin = 8;
constexpr int gap = 2; // beside the field's own margin

} // namespace

SearchField::SearchField(QWidget* parent) : QLineEdit(parent)
{
    // A light ground would be the brightest thing of the window.
    QPalette colours = palette();
    colours.setColor(QPalette::Base, leatherDeep());
    colours.setColor(QPalette::Text, cream());
    colours.setColor(QPalette::PlaceholderText, creamMuted());
    setPalette(colours);
    makeRoom();
}

void SearchField::makeRoom()
{
    const int room = margin + m_magnifier.extent() + gap;
    const QMargins margins(isRightToLeft() ? 0 : room, 0, isRightToLeft() ? room : 0, 0);
    if (margins != textMargins()) setTextMargins(margins);
}

bool SearchField::event(QEvent* event)
{
    if (event->type() == QEvent::LayoutDirectionChange || event->type() == QEvent::ApplicationFontChange)
        makeRoom();
    return QLineEdit::event(event);
}

void SearchField::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    QPainter painter(this);
    const QRect place(margin, 0, m_magnifier.extent(), height());
    m_magnifier.paint(painter, QStyle::visualRect(layoutDirection(), rect(), place), creamMuted());
}

} // namespace lumora
