// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_chip_group.h"

#include "ui/settings/settings_chips.h"
#include "ui/theme/layout_bleed.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QScrollBar>
#include <QWheelEvent>

namespace lumora {

SettingsChipGroup::SettingsChipGroup(LumoraSettings& settings, QWidget* parent) : QScrollArea(parent)
{
    setLayoutBleed(*this, bleed);
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setWidgetResizable(true);
    viewport()->setAutoFillBackground(false);

    auto* strip = new QWidget;
    strip->setAutoFillBackground(false);
    auto* row = new QHBoxLayout(strip);
    row->setContentsMargins(bleed);
    row->setSpacing(6);
    row->addWidget(new FormatSettingsChip(settings));
    row->addWidget(new ResizeSettingsChip(settings));
    row->addWidget(new QualitySettingsChip(settings));
    row->addWidget(new MetadataSettingsChip(settings));
    row->addWidget(new ColorSettingsChip(settings));
    row->addStretch();
    setWidget(strip);
    strip->setAutoFillBackground(false);
}

QSize SettingsChipGroup::sizeHint() const
{
    return widget()->layout()->sizeHint();
}

QSize SettingsChipGroup::minimumSizeHint() const
{
    return {bleed.left() + bleed.right(), sizeHint().height()};
}

bool SettingsChipGroup::event(QEvent* event)
{
    // A chip's text has another length now: the row asks for its new width.
    if (event->type() == QEvent::LayoutRequest) updateGeometry();
    return QScrollArea::event(event);
}

void SettingsChipGroup::wheelEvent(QWheelEvent* event)
{
    const QPoint turn = event->pixelDelta().isNull() ? event->angleDelta() / 3 : event->pixelDelta();
    QScrollBar* bar = horizontalScrollBar();
    bar->setValue(bar->value() - (turn.x() ? turn.x() : turn.y()));
    event->accept();
}

} // namespace lumora
