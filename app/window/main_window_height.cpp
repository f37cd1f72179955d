// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/main_window_height.h"

#include "model/processing_model.h"
#include "ui/results/result_row.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>

#include <algorithm>
#include <cstdlib>

namespace lumora {
namespace {

constexpr int emptyHeight = 360;
constexpr int upperArea = 414;
constexpr int footer = 44;
constexpr int mostRows = 8;
// With the last frame it ends within a fifth of a second.
constexpr int animationMilliseconds = 160;
// From the last word of the window manager about a window that returns, which may come in pieces.
constexpr int settleMilliseconds = 60;

} // namespace

int mainWindowHeight(int resultCount)
{
    if (resultCount <= 0) return emptyHeight;
    return upperArea + ResultRow::height() * std::clamp(resultCount, 1, mostRows) + footer;
}

MainWindowHeight::MainWindowHeight(QWidget& window, const ProcessingModel& model, ReducesMotion reducesMotion,
                                   QObject* parent)
    : QObject(parent), m_window(window), m_reducesMotion(std::move(reducesMotion))
{
    m_animation.setDuration(animationMilliseconds);
    m_animation.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&m_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant& height) { setHeight(height.toInt()); });
    connect(&model, &ProcessingModel::resultInserted, this,
            [this, &model] { resizeFor(model.resultCount()); });
    connect(&model, &ProcessingModel::resultsRemoved, this,
            [this, &model] { resizeFor(model.resultCount()); });
    m_settled.setSingleShot(true);
    m_settled.setInterval(settleMilliseconds);
    connect(&m_settled, &QTimer::timeout, this, &MainWindowHeight::grow);
    m_window.installEventFilter(this);
    resizeFor(model.resultCount());
}

// Some window managers take a resize of a minimised window for the wish to have it back.
bool MainWindowHeight::isOutOfReach() const
{
    return m_window.windowState() & (Qt::WindowMinimized | Qt::WindowMaximized | Qt::WindowFullScreen);
}

int MainWindowHeight::targetHeight() const
{
    const int free = m_window.screen()->availableGeometry().height();
    return std::min(mainWindowHeight(m_resultCount), free);
}

void MainWindowHeight::resizeFor(int resultCount)
{
    m_resultCount = resultCount;
    grow();
}

void MainWindowHeight::grow()
{
    const int target = targetHeight();
    const bool isOnItsWay = m_animation.state() == QAbstractAnimation::Running;
    m_isDue = isOutOfReach();
    if (isOnItsWay && !m_isDue && m_animation.endValue().toInt() == target) return;
    m_animation.stop();
    if (m_isDue || std::abs(m_window.height() - target) <= 1) return;
    if (!m_window.isVisible() || m_reducesMotion()) return setHeight(target);
    m_animation.setStartValue(m_window.height());
    m_animation.setEndValue(target);
    m_animation.start();
}

bool MainWindowHeight::eventFilter(QObject* watched, QEvent* event)
{
    const bool returns = event->type() == QEvent::WindowStateChange || event->type() == QEvent::Resize;
    if (returns && m_isDue && !isOutOfReach()) m_settled.start();
    return QObject::eventFilter(watched, event);
}

void MainWindowHeight::setHeight(int height)
{
    m_window.resize(m_window.width(), height);
    const QRect free = m_window.screen()->availableGeometry();
    const int overhang = m_window.y() + height - (free.bottom() + 1);
    if (overhang > 0 && m_window.y() > free.top())
        m_window.move(m_window.x(), std::max(free.top(), m_window.y() - overhang));
}

} // namespace lumora
