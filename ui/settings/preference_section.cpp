// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/preference_section.h"

#include "ui/controls/styled_label.h"
#include "ui/theme/fonts.h"
#include "ui/theme/surfaces.h"
#include "ui/theme/tidewell_theme.h"

#include <QHBoxLayout>
#include <QLinearGradient>
#include <QPainter>
#include <QVBoxLayout>

namespace lumora {

PreferenceSection::PreferenceSection(const QString& title, QWidget* parent)
    : QWidget(parent), m_content(new QVBoxLayout(this))
{
    m_content->setContentsMargins(14, 14, 14, 14);
    m_content->setSpacing(10);
    auto* heading = new StyledLabel(
        title, [] { return fonts::font(fonts::TextStyle::caption, QFont::Bold); },
        TidewellTheme::copperStrong());
    heading->setUpperCase();
    m_content->addWidget(heading);
    QPalette shades = palette();
    shades.setColor(QPalette::WindowText, TidewellTheme::ink());
    shades.setColor(QPalette::Disabled, QPalette::WindowText,
                    TidewellTheme::withOpacity(TidewellTheme::ink(), 0.45));
    setPalette(shades);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAccessibleName(title);
}

void PreferenceSection::add(QWidget* row)
{
    m_content->addWidget(row);
}

void PreferenceSection::addLeading(QWidget* row)
{
    m_content->addWidget(row, 0, Qt::AlignLeading);
}

void PreferenceSection::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QLinearGradient card(0, 0, 0, height());
    card.setColorAt(0, TidewellTheme::lightCardRaised());
    card.setColorAt(1, TidewellTheme::lightCard());
    paintRounded(painter, rect(), 10, card, TidewellTheme::withOpacity(TidewellTheme::copperStrong(), 0.22));
}

FormRow::FormRow(const QString& label, QWidget* content, QWidget* parent) : QWidget(parent)
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(14);
    auto* column = new StyledLabel(
        label, [] { return fonts::systemFont(13, QFont::DemiBold); }, TidewellTheme::ink());
    column->setTrailingColumn(112);
    column->setWordWrap(true);
    column->setBuddy(content);
    row->addWidget(column, 0, Qt::AlignVCenter);
    const bool stretches = content->sizePolicy().expandingDirections().testFlag(Qt::Horizontal);
    row->addWidget(content, stretches ? 1 : 0, Qt::AlignVCenter);
    if (!stretches) row->addStretch();
}

} // namespace lumora
