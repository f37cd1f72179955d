// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/desktop/text_scale.h"

#include "app/desktop/desktop_settings.h"
#include "ui/theme/fonts.h"

#include <QApplication>
#include <QScreen>

namespace lumora {

TextScale::TextScale(const DesktopSettings& settings, bool screenHasScale)
    : m_settings(settings), m_screenHasScale(screenHasScale)
{
    connect(&settings, &DesktopSettings::changed, this, &TextScale::follow);
    connect(QGuiApplication::primaryScreen(), &QScreen::logicalDotsPerInchChanged, this, &TextScale::follow);
    follow();
}

void TextScale::follow()
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    double scale = screen ? screen->logicalDotsPerInchY() / 96 : 1;
    if (const std::optional<double> wanted = m_settings.textScale()) {
        if (!m_firstScale) m_firstScale = wanted;
        scale *= m_screenHasScale ? *wanted / *m_firstScale : *wanted;
    }
    if (scale == m_applied) return;
    m_applied = scale;
    fonts::install(*qApp, scale);
}

} // namespace lumora
