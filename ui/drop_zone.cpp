// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/drop_zone.h"

#include "model/processing_model.h"
#include "ui/cancel_button.h"
#include "ui/dropped_files.h"
#include "ui/fonts.h"
#include "ui/surfaces.h"
#include "ui/symbols.h"
#include "ui/tidewell_theme.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>
#include <QStyle>

#include <algorithm>

namespace lumora {
namespace {

using fonts::TextStyle;

constexpr double cornerRadius = 8;
constexpr double dashedLineWidth = 2;
constexpr int pictureSize = 44;
constexpr int usualPadding = 16;
constexpr int usualSpacing = 14;
constexpr int leastSpacing = 2;
constexpr int leastPadding = 4;
constexpr double progressHeight = 3;
constexpr int cancelMargin = 8;
constexpr int turnMilliseconds = 4000;

QString hint()
{
    return QStringLiteral("Drop image files or folders here, or onto the Lumora Dock icon.");
}

// Without the gaps: the icon's drawn size and two lines.
int contentHeight()
{
    return fonts::scaled(pictureSize) + fonts::lineHeight(TextStyle::headline) +
           fonts::lineHeight(TextStyle::subheadline);
}

} // namespace

int DropZone::leastHeight()
{
    return contentHeight() + 2 * leastSpacing + 2 * leastPadding;
}

DropZone::DropZone(ProcessingModel& processing, std::function<bool()> reducesMotion, QWidget* parent)
    : QAbstractButton(parent), m_processing(processing), m_reducesMotion(std::move(reducesMotion)),
      m_cancel(new CancelButton(this))
{
    setAcceptDrops(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(QStringLiteral("Choose images"));
    m_turning.setStartValue(0.0);
    m_turning.setEndValue(360.0);
    m_turning.setDuration(turnMilliseconds);
    m_turning.setLoopCount(-1);
    connect(&m_turning, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(m_cancel, &QAbstractButton::clicked, &processing, &ProcessingModel::cancel);
    connect(&processing, &ProcessingModel::isProcessingChanged, this, &DropZone::refresh);
    connect(&processing, &ProcessingModel::statusTextChanged, this, &DropZone::refresh);
    connect(&processing, &ProcessingModel::progressChanged, this, [this] { update(); });
    refresh();
}

QString DropZone::iconName() const
{
    return m_processing.isProcessing() ? QStringLiteral("arrow.triangle.2.circlepath")
                                       : QStringLiteral("square.and.arrow.down");
}

double DropZone::progress() const
{
    if (m_processing.totalCount() == 0) return 0;
    return static_cast<double>(m_processing.completedCount()) / m_processing.totalCount();
}

QSize DropZone::sizeHint() const
{
    return {400, usualHeight};
}

QSize DropZone::minimumSizeHint() const
{
    return {0, leastHeight()};
}

void DropZone::refresh()
{
    m_cancel->setVisible(m_processing.isProcessing());
    setAccessibleDescription(m_processing.statusText() + QStringLiteral(". ") + hint());
    turnIfAsked();
    update();
}

void DropZone::turnIfAsked()
{
    const bool turns = m_processing.isProcessing() && isVisible() && !m_reducesMotion();
    if (turns == isTurning()) return;
    if (turns) {
        m_turning.start();
    } else {
        m_turning.stop();
    }
}

bool DropZone::event(QEvent* event)
{
    const bool done = QAbstractButton::event(event);
    const QEvent::Type type = event->type();
    if (type == QEvent::Show || type == QEvent::Hide) turnIfAsked();
    if (type == QEvent::ApplicationFontChange) updateGeometry();
    return done;
}

void DropZone::setTargeted(bool targeted)
{
    m_isTargeted = targeted;
    update();
}

void DropZone::dragEnterEvent(QDragEnterEvent* event)
{
    if (!offersFiles(*event->mimeData())) return;
    event->setDropAction(Qt::CopyAction);
    event->accept();
    setTargeted(true);
}

void DropZone::dragMoveEvent(QDragMoveEvent* event)
{
    event->setDropAction(Qt::CopyAction);
    event->accept();
}

void DropZone::dragLeaveEvent(QDragLeaveEvent*)
{
    setTargeted(false);
}

void DropZone::dropEvent(QDropEvent* event)
{
    setTargeted(false);
    event->setDropAction(Qt::CopyAction);
    event->accept();
    Q_EMIT dropped(*event->mimeData());
}

void DropZone::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return click();
    QAbstractButton::keyPressEvent(event);
}

void DropZone::resizeEvent(QResizeEvent* event)
{
    QAbstractButton::resizeEvent(event);
    const QSize size = m_cancel->sizeHint();
    const QRect corner(width() - size.width() - cancelMargin, cancelMargin, size.width(), size.height());
    m_cancel->setGeometry(style()->visualRect(layoutDirection(), rect(), corner));
}

void DropZone::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    paintField(painter);
    paintContent(painter);
    if (m_processing.isProcessing()) paintProgress(painter);
    if (hasFocus())
        paintFocusRing(painter, QRectF(rect()).adjusted(3, 3, -3, -3), cornerRadius - 3,
                       TidewellTheme::copperBright());
}

void DropZone::paintField(QPainter& painter) const
{
    using namespace TidewellTheme;
    const QColor fill = m_isTargeted ? withOpacity(copper(), 0.2) : withOpacity(leatherRaised(), 0.9);
    paintRounded(painter, rect(), cornerRadius, fill, Qt::transparent);
    if (underMouse() && !m_isTargeted)
        paintRounded(painter, rect(), cornerRadius, withOpacity(cream(), isDown() ? 0.06 : 0.03),
                     Qt::transparent);
    QPen dashes(m_isTargeted ? copperBright() : withOpacity(cream(), 0.18), dashedLineWidth,
                Qt::CustomDashLine, Qt::FlatCap);
    // In units of the line's width: 8 on, 6 off.
    dashes.setDashPattern({8 / dashedLineWidth, 6 / dashedLineWidth});
    painter.setPen(dashes);
    painter.setBrush(Qt::NoBrush);
    const double half = dashedLineWidth / 2;
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), cornerRadius - half,
                            cornerRadius - half);
}

void DropZone::paintProgress(QPainter& painter) const
{
    QPainterPath shape;
    shape.addRoundedRect(rect(), cornerRadius, cornerRadius);
    painter.save();
    painter.setClipPath(shape);
    const double done = width() * progress();
    const double left = isRightToLeft() ? width() - done : 0;
    painter.fillRect(QRectF(left, height() - progressHeight, done, progressHeight), TidewellTheme::copper());
    painter.restore();
}

void DropZone::paintContent(QPainter& painter) const
{
    // Where the zone is lower than usual its gaps give way first; icon and texts keep their size.
    const int spare = height() - contentHeight() - 2 * usualPadding;
    const int spacing = std::clamp(spare / 2, leastSpacing, usualSpacing);
    const int extent = fonts::scaled(pictureSize);
    int top = (height() - contentHeight() - 2 * spacing) / 2;
    paintIcon(painter, QRectF((width() - extent) / 2.0, top, extent, extent));
    top += extent + spacing;
    const auto drawLine = [&](TextStyle style, const QColor& colour, const QString& text) {
        const QRect line(usualPadding, top, width() - 2 * usualPadding, fonts::lineHeight(style));
        top += line.height() + spacing;
        painter.setFont(fonts::font(style));
        painter.setPen(colour);
        painter.drawText(line, Qt::AlignCenter | Qt::TextDontClip,
                         painter.fontMetrics().elidedText(text, Qt::ElideRight, line.width()));
    };
    drawLine(TextStyle::headline, TidewellTheme::cream(), m_processing.statusText());
    drawLine(TextStyle::subheadline, TidewellTheme::creamMuted(), hint());
}

void DropZone::paintIcon(QPainter& painter, const QRectF& area) const
{
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.translate(area.center());
    if (isTurning()) painter.rotate(m_turning.currentValue().toDouble());
    Symbol{iconName(), pictureSize, QFont::Normal, true}.paint(painter, area.translated(-area.center()),
                                                               TidewellTheme::copper());
    painter.restore();
}

} // namespace lumora
