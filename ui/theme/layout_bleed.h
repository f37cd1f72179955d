// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// How far a frame reaches beyond the place that its layout gives it, so that glows and rings of what it holds
// are not cut. The style looks for it. Main thread.
#pragma once

#include <QMargins>
#include <QVariant>
#include <QWidget>

namespace lumora {

inline constexpr char layoutBleedProperty[] = "lumoraLayoutBleed";

inline void setLayoutBleed(QWidget& frame, const QMargins& bleed)
{
    frame.setProperty(layoutBleedProperty, QVariant::fromValue(bleed));
}

// Nothing where none was set.
inline QMargins layoutBleed(const QWidget* frame)
{
    return frame ? frame->property(layoutBleedProperty).value<QMargins>() : QMargins();
}

} // namespace lumora
