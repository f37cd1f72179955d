// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/comparison/comparison_controls.h"

#include "ui/comparison/comparison_canvas.h"
#include "ui/comparison/result_sequence.h"
#include "ui/controls/chip_button.h"
#include "ui/controls/styled_label.h"
#include "ui/theme/fonts.h"
#include "ui/theme/tidewell_theme.h"

#include <QEvent>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace lumora {
namespace {

constexpr int gap = 6;
constexpr int groupGap = 18;

// The zoom has a column, however short its figures are.
QSize sizeOf(const QWidget& part)
{
    return part.sizeHint().expandedTo(part.minimumSize());
}

QFont zoomFont()
{
    return fonts::systemFont(11, QFont::DemiBold);
}

} // namespace

ComparisonControls::ComparisonControls(ComparisonCanvas& canvas, ResultSequence& results, QWidget* parent)
    : QWidget(parent), m_canvas(canvas), m_results(results),
      m_previous(addChip("arrow.up", "Previous", "Compare the result above (Page Up)")),
      m_next(addChip("arrow.down", "Next", "Compare the result below (Page Down)")),
      m_zoomOut(addChip("minus.magnifyingglass", "", "Zoom out (-)")),
      m_zoom(new FiguresLabel(QString(), zoomFont, TidewellTheme::cream(), this)),
      m_zoomIn(addChip("plus.magnifyingglass", "", "Zoom in (+)")),
      m_fit(addChip("arrow.up.left.and.arrow.down.right", "Fit", "Show the whole pictures (0)")),
      m_fullSize(addChip("aspectratio", "100%", "Show each pixel as one of the screen (1)")),
      m_difference(
          addChip("circle.lefthalf.filled", "Difference", "Show only where the pictures differ (D)")),
      m_flip(addChip("arrow.left.arrow.right", "Hold to Flip",
                     "Show each picture in place of the other while held (Space)")),
      m_groups{{m_previous, m_next}, {m_zoomOut, m_zoom, m_zoomIn, m_fit, m_fullSize}, {m_difference, m_flip}}
{
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    m_zoomOut->setAccessibleName(QStringLiteral("Zoom out"));
    m_zoomIn->setAccessibleName(QStringLiteral("Zoom in"));
    m_zoom->setTrailingColumn(34);
    m_difference->setCheckable(true);
    m_difference->setMarksChecked();
    connect(m_previous, &QAbstractButton::clicked, &results, [this] { m_results.step(-1); });
    connect(m_next, &QAbstractButton::clicked, &results, [this] { m_results.step(1); });
    connect(m_zoomOut, &QAbstractButton::clicked, &canvas, [this] { m_canvas.stepZoom(-1); });
    connect(m_zoomIn, &QAbstractButton::clicked, &canvas, [this] { m_canvas.stepZoom(1); });
    connect(m_fit, &QAbstractButton::clicked, &canvas, &ComparisonCanvas::fit);
    connect(m_fullSize, &QAbstractButton::clicked, &canvas, [this] { m_canvas.zoomTo(1); });
    connect(m_difference, &QAbstractButton::clicked, &canvas, &ComparisonCanvas::setShowsDifference);
    connect(m_flip, &QAbstractButton::pressed, &canvas, [this] { m_canvas.setFlipped(true); });
    connect(m_flip, &QAbstractButton::released, &canvas, [this] { m_canvas.setFlipped(false); });
    connect(&canvas, &ComparisonCanvas::changed, this, &ComparisonControls::refresh);
    connect(&results, &ResultSequence::neighboursChanged, this, &ComparisonControls::refresh);
    refresh();
}

ChipButton* ComparisonControls::addChip(const char* symbol, const char* text, const char* helpText)
{
    auto* chip = new ChipButton(QLatin1String(helpText), this);
    chip->display(QLatin1String(symbol), QLatin1String(text));
    return chip;
}

void ComparisonControls::refresh()
{
    const ComparisonGeometry& geometry = m_canvas.geometry();
    const double zoom = geometry.zoom();
    m_zoom->setText(QStringLiteral("%1%").arg(std::lround(zoom * 100)));
    m_zoom->setAccessibleName(QStringLiteral("Zoom %1").arg(m_zoom->text()));
    m_zoomOut->setEnabled(!geometry.isEmpty() && !geometry.fits());
    m_zoomIn->setEnabled(!geometry.isEmpty() && zoom < ComparisonGeometry::mostZoom);
    m_fit->setEnabled(!geometry.fits());
    m_fullSize->setEnabled(!geometry.isEmpty() && zoom != 1);
    m_difference->setEnabled(m_canvas.hasBoth());
    m_difference->setChecked(m_canvas.showsDifference());
    m_flip->setEnabled(m_canvas.hasBoth());
    m_previous->setEnabled(m_results.canStep(-1));
    m_next->setEnabled(m_results.canStep(1));
}

int ComparisonControls::widthOf(const Group& group, bool compact) const
{
    int width = -gap;
    for (const QWidget* part : group) {
        const auto* chip = qobject_cast<const ChipButton*>(part);
        const bool hasText = chip && !chip->text().isEmpty();
        width += gap + (chip ? chip->widthWhen(compact || !hasText) : sizeOf(*part).width());
    }
    return width;
}

QSize ComparisonControls::sizeHint() const
{
    int width = groupGap * 2;
    for (const Group& group : m_groups)
        width += widthOf(group, false);
    return {width, m_fit->sizeHint().height()};
}

QSize ComparisonControls::minimumSizeHint() const
{
    int width = groupGap * 2;
    for (const Group& group : m_groups)
        width += widthOf(group, true);
    return {width, m_fit->sizeHint().height()};
}

bool ComparisonControls::event(QEvent* event)
{
    const QEvent::Type type = event->type();
    if (type == QEvent::LayoutDirectionChange || type == QEvent::ApplicationFontChange) {
        updateGeometry();
        arrange();
    }
    return QWidget::event(event);
}

void ComparisonControls::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrange();
}

// One group at each edge, and one in the middle as far as they leave it there.
void ComparisonControls::arrange()
{
    const bool compact = width() < sizeHint().width();
    for (auto* chip : findChildren<ChipButton*>(Qt::FindDirectChildrenOnly))
        chip->setCompact(compact || chip->text().isEmpty());
    const int first = widthOf(m_groups[0], compact);
    const int middle = widthOf(m_groups[1], compact);
    const int last = width() - widthOf(m_groups[2], compact);
    place(m_groups[0], 0);
    place(m_groups[1], std::clamp((width() - middle) / 2, first + groupGap,
                                  std::max(first + groupGap, last - groupGap - middle)));
    place(m_groups[2], last);
}

void ComparisonControls::place(const Group& group, int left)
{
    for (QWidget* part : group) {
        const QSize size = sizeOf(*part);
        part->setGeometry(QStyle::visualRect(layoutDirection(), rect(),
                                             QRect(QPoint(left, (height() - size.height()) / 2), size)));
        left += size.width() + gap;
    }
}

} // namespace lumora
