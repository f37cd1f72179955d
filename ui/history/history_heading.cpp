// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/history/history_heading.h"

#include "ui/controls/chip_button.h"
#include "ui/controls/elided_label.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace lumora {
namespace {

constexpr int leastWidthForText = 280;

} // namespace

HistoryHeading::HistoryHeading(ChipButton* chip, QWidget* parent)
    : QWidget(parent), m_chip(chip),
      m_title(new ElidedLabel([] { return fonts::font(fonts::TextStyle::headline); })),
      m_facts(new ElidedLabel([] { return fonts::font(fonts::TextStyle::subheadline); }))
{
    auto* lines = new QVBoxLayout;
    lines->setSpacing(2);
    lines->addWidget(m_title);
    lines->addWidget(m_facts);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(10);
    row->addLayout(lines, 1);
    row->addWidget(chip, 0, Qt::AlignVCenter);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void HistoryHeading::display(const QString& title, const QString& facts)
{
    m_title->display(title, TidewellTheme::cream());
    m_facts->display(facts, TidewellTheme::creamMuted());
}

void HistoryHeading::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_chip->setCompact(width() < fonts::scaled(leastWidthForText));
}

QString HistoryHeading::title() const
{
    return m_title->text();
}

QString HistoryHeading::facts() const
{
    return m_facts->text();
}

} // namespace lumora
