// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropzone/drop_zone.h"

#include "model/processing_model.h"
#include "ui/dropzone/batch_controls.h"
#include "ui/dropzone/drop_zone_picture.h"
#include "ui/intake/offered_files.h"

#include <QDragEnterEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>

namespace lumora {
namespace {

constexpr int controlsMargin = 8;
constexpr int turnMilliseconds = 4000;

} // namespace

DropZone::DropZone(ProcessingModel& processing, std::function<bool()> reducesMotion, QWidget* parent)
    : QAbstractButton(parent), m_processing(processing), m_reducesMotion(std::move(reducesMotion)),
      m_controls(new BatchControls(processing, this))
{
    setAcceptDrops(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
    setAccessibleName(QStringLiteral("Choose images"));
    setToolTip(QStringLiteral("Click to choose images or folders"));
    m_turning.setStartValue(0.0);
    m_turning.setEndValue(360.0);
    m_turning.setDuration(turnMilliseconds);
    m_turning.setLoopCount(-1);
    connect(&m_turning, &QVariantAnimation::valueChanged, this, [this] { update(); });
    connect(&processing, &ProcessingModel::isProcessingChanged, this, &DropZone::refresh);
    connect(&processing, &ProcessingModel::statusTextChanged, this, &DropZone::refresh);
    connect(&processing, &ProcessingModel::progressChanged, this, &DropZone::followPace);
    m_clock.setInterval(std::chrono::seconds(1));
    connect(&m_clock, &QTimer::timeout, this, [this] { update(); });
    followPace();
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
    return {0, DropZonePicture::leastHeight()};
}

void DropZone::refresh()
{
    const QString left = timeLeft();
    setAccessibleDescription(m_processing.statusText() + QStringLiteral(". ") +
                             (left.isEmpty() ? left : left + QStringLiteral(". ")) + secondLine());
    m_pace.setPaused(m_processing.isPaused(), BatchPace::Clock::now());
    turnIfAsked();
    update();
}

void DropZone::followPace()
{
    const int completed = m_processing.completedCount();
    const int total = m_processing.totalCount();
    const BatchPace::Time now = BatchPace::Clock::now();
    if (completed == 0 || total != m_pace.total()) m_pace = BatchPace(completed, total, now);
    m_pace.progressed(completed, now);
    update();
}

QString DropZone::timeLeft() const
{
    if (!m_processing.isProcessing() || m_processing.isCancelling()) return {};
    const auto left = m_pace.timeLeft(BatchPace::Clock::now());
    return left ? timeLeftText(*left) : QString();
}

// What became of a batch that had other than successes stands before the hint until the next one.
QString DropZone::secondLine() const
{
    const QString outcome = m_processing.isProcessing() ? QString() : m_processing.outcome().text();
    return outcome.isEmpty() ? DropZonePicture::hint()
                             : outcome + QStringLiteral(". ") + DropZonePicture::hint();
}

bool DropZone::isBusy() const
{
    return m_processing.isProcessing();
}

void DropZone::cancel()
{
    m_controls->cancel();
}

void DropZone::turnIfAsked()
{
    const bool works = m_processing.isProcessing() && isVisible();
    if (works && !m_clock.isActive()) m_clock.start();
    if (!works) m_clock.stop();
    const bool turns = works && !m_processing.isPaused() && !m_reducesMotion();
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
    if (type == QEvent::ApplicationFontChange || type == QEvent::LayoutDirectionChange) placeControls();
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
    placeControls();
}

void DropZone::placeControls()
{
    const QSize size = m_controls->sizeHint();
    const QRect corner(width() - size.width() - controlsMargin, controlsMargin, size.width(), size.height());
    m_controls->place(style()->visualRect(layoutDirection(), rect(), corner));
}

void DropZone::paintEvent(QPaintEvent*)
{
    DropZonePicture picture;
    picture.area = rect();
    picture.direction = layoutDirection();
    picture.iconName = iconName();
    if (isTurning()) picture.iconTurn = m_turning.currentValue().toDouble();
    picture.status = m_processing.statusText();
    picture.secondLine = secondLine();
    if (m_processing.isProcessing()) picture.progress = progress();
    picture.timeLeft = timeLeft();
    picture.targeted = m_isTargeted;
    picture.hovered = underMouse();
    picture.pressed = isDown();
    picture.focused = hasFocus();
    QPainter painter(this);
    picture.paint(painter);
}

} // namespace lumora
