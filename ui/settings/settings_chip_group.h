// SPDX-FileCopyrightText: 2026 Tidewell
// SPDX-License-Identifier: GPL-3.0-or-later
// The row of chips. It scrolls sideways where it does not fit; the chip with the keyboard focus is always in
// view. The scrolled chips run on into the gap beside the row and fade there instead of being cut at its
// edge: the widget is wider and higher than its place in a layout by `bleed`.
#pragma once

#include <QScrollArea>

namespace lumora {

class LumoraSettings;

class SettingsChipGroup : public QScrollArea
{
    Q_OBJECT

public:
    static constexpr QMargins bleed{12, 4, 12, 4};

    explicit SettingsChipGroup(LumoraSettings& settings, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void placeFades();

    QWidget* m_fadeAtLeft;
    QWidget* m_fadeAtRight;
};

} // namespace lumora
