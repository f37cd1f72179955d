// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/settings/settings_chip_group.h"

#include "ui/settings/settings_chips.h"
#include "ui/theme/layout_bleed.h"
#include "ui/theme/surfaces.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QLinearGradient>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

namespace lumora {
namespace {

constexpr int fadeWidth = 28;

// The window's ground over the chips, from nothing to all of it at the edge.
class Fade : public QWidget
{
public:
    Fade(bool atLeft, QWidget* parent) : QWidget(parent), m_atLeft(atLeft)
    {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
    }

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPixmap ground(size() * devicePixelRatioF());
        ground.setDevicePixelRatio(devicePixelRatioF());
        ground.fill(Qt::transparent);
        QPainter painter(&ground);
        painter.translate(-mapTo(window(), QPoint()));
        painter.fillRect(window()->rect(), windowGradient(window()->rect(), layoutDirection()));
        painter.resetTransform();
        painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
        QLinearGradient depth(m_atLeft ? width() : 0, 0, m_atLeft ? 0 : width(), 0);
        depth.setColorAt(0, Qt::transparent);
        depth.setColorAt(0.8, Qt::black);
        painter.fillRect(rect(), depth);
        painter.end();
        QPainter(this).drawPixmap(0, 0, ground);
    }

private:
    const bool m_atLeft;
};

} // namespace

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
    m_fadeAtLeft = new Fade(true, this);
    m_fadeAtRight = new Fade(false, this);
    connect(horizontalScrollBar(), &QScrollBar::valueChanged, this, &SettingsChipGroup::placeFades);
    connect(horizontalScrollBar(), &QScrollBar::rangeChanged, this, &SettingsChipGroup::placeFades);
}

void SettingsChipGroup::placeFades()
{
    const QScrollBar& bar = *horizontalScrollBar();
    const bool mirrored = isRightToLeft();
    m_fadeAtLeft->setGeometry(0, 0, fadeWidth, height());
    m_fadeAtRight->setGeometry(width() - fadeWidth, 0, fadeWidth, height());
    m_fadeAtLeft->setVisible(mirrored ? bar.value() < bar.maximum() : bar.value() > bar.minimum());
    m_fadeAtRight->setVisible(mirrored ? bar.value() > bar.minimum() : bar.value() < bar.maximum());
}

void SettingsChipGroup::resizeEvent(QResizeEvent* event)
{
    QScrollArea::resizeEvent(event);
    placeFades();
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
