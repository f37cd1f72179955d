// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// Gives the application's text the size that the desktop asks for, now and whenever it changes: by the
// screen's resolution (96 dots per inch is 1) and by the desktop's text scale. Main thread.
#pragma once

#include <QObject>

#include <optional>

namespace lumora {

class DesktopSettings;

class TextScale : public QObject
{
    Q_OBJECT

public:
    // `screenHasScale`: the screen is scaled by what the desktop asks for at the start, as on X11, where
    // desktops write it into the resolution and the toolkit enlarges all by that; then only later changes
    // count. The settings must outlive this object.
    TextScale(const DesktopSettings& settings, bool screenHasScale);

private:
    void follow();

    const DesktopSettings& m_settings;
    const bool m_screenHasScale;
    std::optional<double> m_firstScale;
    double m_applied = 0;
};

} // namespace lumora
