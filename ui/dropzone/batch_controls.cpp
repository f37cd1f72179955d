// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/dropzone/batch_controls.h"

#include "model/processing_model.h"
#include "ui/dropzone/cancel_button.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QStyle>

namespace lumora {
namespace {

constexpr int gap = 4;

} // namespace

BatchControls::BatchControls(ProcessingModel& processing, QWidget* parent)
    : QWidget(parent), m_processing(processing), m_more(new ZoneButton(ZoneButton::Glyph::chevron, this)),
      m_cancel(new CancelButton(this))
{
    m_more->setToolTip(QStringLiteral("Pause or cancel"));
    m_more->setAccessibleName(QStringLiteral("Batch menu"));
    m_more->setAccessibleDescription(m_more->toolTip());
    connect(m_cancel, &QAbstractButton::clicked, this, &BatchControls::cancel);
    connect(m_more, &QAbstractButton::clicked, this, &BatchControls::showMenu);
    connect(&processing, &ProcessingModel::isProcessingChanged, this, &BatchControls::refresh);
    connect(&processing, &ProcessingModel::statusTextChanged, this, &BatchControls::refresh);
    refresh();
}

void BatchControls::refresh()
{
    setVisible(m_processing.isProcessing());
    m_cancel->setEndsAtOnce(m_processing.isCancelling());
}

void BatchControls::cancel()
{
    if (m_processing.isCancelling()) return m_processing.cancelNow();
    m_processing.cancel();
}

QMenu* BatchControls::makeMenu()
{
    auto* menu = new QMenu(this);
    menu->setAccessibleName(m_more->accessibleName());
    const bool paused = m_processing.isPaused();
    QAction* pause = menu->addAction(paused ? QStringLiteral("Resume") : QStringLiteral("Pause"), this,
                                     [this, paused] { m_processing.setPaused(!paused); });
    pause->setEnabled(m_processing.canPause());
    menu->addSeparator();
    menu->addAction(QStringLiteral("Cancel After Files in Work"), this, [this] { m_processing.cancel(); })
        ->setEnabled(m_processing.isProcessing() && !m_processing.isCancelling());
    menu->addAction(QStringLiteral("Cancel Now"), this, [this] { m_processing.cancelNow(); });
    return menu;
}

void BatchControls::showMenu()
{
    QMenu* menu = makeMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->popup(m_more->mapToGlobal(QPoint(0, m_more->height())));
}

void BatchControls::contextMenuEvent(QContextMenuEvent*)
{
    showMenu();
}

QSize BatchControls::sizeHint() const
{
    const QSize button = m_cancel->sizeHint();
    return {2 * button.width() + gap, button.height()};
}

void BatchControls::place(const QRect& area)
{
    setGeometry(area);
    const QSize button = m_cancel->sizeHint();
    const auto put = [&](QWidget* control, int left) {
        control->setGeometry(QStyle::visualRect(layoutDirection(), rect(), QRect(QPoint(left, 0), button)));
    };
    put(m_more, 0);
    put(m_cancel, button.width() + gap);
}

} // namespace lumora
