// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/window/main_window_height.h"

#include "model/processing_model.h"
#include "ui/results/result_row.h"

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
constexpr int animationMilliseconds = 200;

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
    resizeFor(model.resultCount());
}

void MainWindowHeight::resizeFor(int resultCount)
{
    const int free = m_window.screen()->availableGeometry().height();
    const int target = std::min(mainWindowHeight(resultCount), free);
    m_animation.stop();
    if (m_window.isMaximized() || std::abs(m_window.height() - target) <= 1) return;
    if (!m_window.isVisible() || m_reducesMotion()) return setHeight(target);
    m_animation.setStartValue(m_window.height());
    m_animation.setEndValue(target);
    m_animation.start();
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
